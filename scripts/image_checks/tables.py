"""What the image may hold. Each table is checked in both directions: a row that nothing needs is an error, too."""

# The engine's services that are imported, with the bytes of their arguments: all are exported by the engine of
# Windows 2000 already. What came later, or lacks in some engines, is looked up by name at run time.
IMPORTS = {
    "CLIPOBJ_bEnum": 12,
    "CLIPOBJ_cEnumStart": 20,
    "EngAcquireSemaphore": 4,
    "EngAllocMem": 12,
    "EngAssociateSurface": 12,
    "EngBitBlt": 44,
    "EngCopyBits": 24,
    "EngCreateBitmap": 24,
    "EngCreateDeviceBitmap": 16,
    "EngCreateDeviceSurface": 16,
    "EngCreateSemaphore": 0,
    "EngDebugPrint": 12,
    "EngDeleteSurface": 4,
    "EngFillPath": 28,
    "EngFindImageProcAddress": 8,
    "EngFreeMem": 4,
    "EngFreeModule": 4,
    "EngLineTo": 36,
    "EngLoadImage": 4,
    "EngLoadModule": 4,
    "EngLockSurface": 4,
    "EngMapModule": 8,
    "EngPaint": 20,
    "EngQueryPerformanceCounter": 4,
    "EngQueryPerformanceFrequency": 4,
    "EngReleaseSemaphore": 4,
    "EngStretchBlt": 44,
    "EngStrokeAndFillPath": 40,
    "EngStrokePath": 32,
    "EngTextOut": 40,
    "EngUnloadImage": 4,
    "EngUnlockSurface": 4,
    "FONTOBJ_pifi": 4,
    "PALOBJ_cGetColors": 16,
    "PATHOBJ_bEnum": 8,
    "PATHOBJ_vEnumStart": 4,
    "PATHOBJ_vGetBounds": 8,
    "STROBJ_bEnum": 12,
    "STROBJ_dwGetCodePage": 4,
    "STROBJ_vEnumStart": 4,
    "XLATEOBJ_piVector": 4,
}

EXPORT = "DrvEnableDriver"
LIBRARY = "win32k.sys"

# The version resource. No string but these.
VERSION_STRINGS = {
    "CompanyName": "Koru",
    "FileDescription": "Koru Display Driver",
    "FileVersion": None,  # any
    "InternalName": "koru.dll",
    "OriginalFilename": "koru.dll",
    "ProductName": "Koru",
    "ProductVersion": None,
}

# Instructions that are refused: a pattern over name and operands, and what it is.
REFUSED_INSTRUCTIONS = [
    (r"\(bad\)|\.byte|^$", "not an instruction"),
    (r"^f\w+", "floating point"),
    (r"%st\b", "floating point"),
    (r"%mm[0-7]|^f?emms\b|^maskmovq", "MMX"),
    (r"%[xyz]mm\d|%k[0-7]\b|^(ld|st)mxcsr|^prefetch|^[lms]fence|^movnti|^clflush|^xsave|^xrstor", "SSE"),
    (r"^(cmov|nop[wl]\b|ud2|sysenter|syscall|rdpmc)", "newer than the Pentium"),
    (r"^(in|out|ins|outs|cli|sti|hlt|lgdt|lidt|wrmsr|rdmsr|iret)\b|%[cd]r\d", "not a display driver's to execute"),
]

FRAME_LIMIT = 1024  # bytes of one function: return address, saved registers, locals and the arguments of its calls
DEPTH_LIMIT = 4096  # bytes of an entry point and all that it calls, the engine and the consumer not counted

# Functions that call themselves, by whatever way, and how often at most: none.
RECURSION_BOUNDS = {}

# Calls through pointers. Each function that makes some has its row: a pattern over the function's name; the bytes
# of arguments that the callee takes off the stack; and a pattern of the functions that are called, or None for one
# outside of the driver (real driver, engine, consumer, chain manager).
EXPAND = r"FunctionRef<unsigned int \(unsigned char\*, unsigned int\)>.*::_FUN"
POINTER_CALLS = [
    # the real driver
    (r"cModuleLoader::Load\(", 12, None),
    (r"cModuleLoader::DisableRealDriver\(", 0, None),
    (r"DrvEnablePDEV\(", 44, None),
    (r"DrvCompletePDEV\(", 8, None),
    (r"DrvDisablePDEV\(", 4, None),
    (r"DrvEnableSurface\(", 4, None),
    (r"DrvDisableSurface\(", 4, None),
    (r"DrvAssertMode\(", 8, None),
    (r"DrvGetModes\(", 12, None),
    (r"Synchronize\(", 8, None),
    (r"DrvSynchronizeSurface\(", 12, None),
    (r"DrvIcmSetDeviceGammaRamp\(", 12, None),
    (r"DrvSetPalette\(", 20, None),
    (r"DrvDitherColor\(", 16, None),  # the second is the engine's
    (r"Forward\(koru::EscapeCall", 24, None),
    (r"CopyToScreenCut\(", 24, None),
    (r"FunctionRef<.*<koru::DrvRealizeBrush\(.*::_FUN", 24, None),
    (r"FunctionRef<.*<koru::DrvMovePointer\(.*::_FUN", 16, None),
    (r"FunctionRef<.*<koru::DrvSetPointerShape\(.*::_FUN", 40, None),
    # services of the engine that were looked up by name
    (r"FunctionRef<.*<koru::DrvAlphaBlend\(.*::_FUN", 28, None),
    (r"FunctionRef<.*<koru::DrvTransparentBlt\(.*::_FUN", 32, None),
    (r"FunctionRef<.*<koru::DrvGradientFill\(.*::_FUN", 40, None),
    (r"FunctionRef<.*<koru::DrvStretchBltROP\(.*::_FUN", 52, None),
    (r"FunctionRef<.*<koru::DrvPlgBlt\(.*::_FUN", 44, None),
    # the consumer
    (r"InitializeFunctions2\(", 0, None),
    (r"SubmitRecord\(", 12, None),
    (r"GetConsumerId\(", 4, None),
    # the chain manager, whose function leaves its arguments to the caller
    (r"DCMGetNextDriver\(", 0, None),
    # the driver itself
    (r"DrawHooked\(", 0, r"FunctionRef<int \(SURFOBJ\*, SURFOBJ\*\)>.*::_FUN"),
    (r"FindTarget\(", 0, r"FunctionRef<bool \(RECTL&\)>.*::_FUN"),
    (r"ScreenList::ForEach\(", 0, r"FunctionRef<void \(koru::Screen&\)>.*::_FUN"),
    (r"RunPointerHook\(", 0, r"FunctionRef<unsigned int \(SURFOBJ\*, RECTL&\)>.*::_FUN"),
    (r"CaptureCall\(", 0, EXPAND),
    (r"RecordCursor::(Place|Append)<", 0, r"(TargetSurface|Expand\w+)\(.*, unsigned char\*, unsigned int\)"),
    (r"Blend(Alpha|Masked)\(", 0, r"AccessOf<.*::_FUN"),
    (r"SmoothMagnified\(", 0, r"Smooth(Four|Sixteen)<.*\(koru::SmoothPass const&\)"),
    (r"RunKoruEscape\(", 0, r".*\(koru::KoruCall&\)"),
    (r"RunZoomEscape\(", 0, r".*\(koru::ZoomCall&\)"),
]
