#pragma once

// What is recorded, and who gets it. Reached through Control.

#include "escape_link.h"
#include "records.h"

namespace koru::client {

// Addresses of the consumer's entry points, 0 for none. The driver calls them in kernel mode and takes them
// as they are given: whoever may send this escape may run code in the kernel.
struct ConsumerFunctions {
    std::uint32_t QC; // asked once, when the table is installed; 0 means: not ready
    std::uint32_t QD; // never called
    std::uint32_t QP; // takes each record
    std::uint32_t GSD; // identifiers of the caller
    std::uint32_t DSF; // called when QC answered 0, on the older driver interface only
};

class CaptureControl {
public:
    explicit CaptureControl(const EscapeLink& link)
        : link_(link)
    {
    }

    bool Install(const ConsumerFunctions& consumer) const; // replaces all five
    bool On() const { return link_.Koru(KoruCommand::CaptureOn).has_value(); }
    bool Off() const { return link_.Koru(KoruCommand::CaptureOff).has_value(); }
    bool SetMask(std::uint32_t mask) const { return link_.KoruDone(KoruCommand::SetCaptureMask, {mask}); }
    // The driver answers 1 whatever its mask is.
    std::optional<std::uint32_t> AskMask() const { return link_.Koru(KoruCommand::AskCaptureMask); }
    // Kept by the driver, without effect on records; -1 for no limit.
    bool SetBitsLimits(std::int32_t pixels, std::uint32_t callMask) const;
    bool SetFlag() const { return link_.KoruDone(KoruCommand::SetFlag); } // kept and never read

private:
    const EscapeLink& link_;
};

enum class ZoneHandle : std::uint32_t {};

// Rectangles of a screen whose drawing is not recorded.
class DarkZoneControl {
public:
    explicit DarkZoneControl(const EscapeLink& link)
        : link_(link)
    {
    }

    std::optional<ZoneHandle> Add(std::uint32_t dhpdev, const Rect& zone) const; // none when refused, too
    bool Delete(std::uint32_t dhpdev, ZoneHandle zone) const;
    // Of one screen. For a device that the driver does not know it clears the zones of all, and is false.
    bool Clear(std::uint32_t dhpdev) const;
    bool ClearAll() const { return link_.Koru(KoruCommand::ClearDarkZones).has_value(); }

private:
    const EscapeLink& link_;
};

// Callers whose drawing is not recorded, as the consumer's GSD names them.
class DarkIdControl {
public:
    DarkIdControl(const EscapeLink& link, KoruCommand add, KoruCommand remove, KoruCommand clear)
        : link_(link)
        , add_(add)
        , delete_(remove)
        , clear_(clear)
    {
    }

    bool Add(std::uint32_t id) const { return link_.KoruDone(add_, {id}); } // false when present
    bool Delete(std::uint32_t id) const { return link_.KoruDone(delete_, {id}); } // false when absent
    bool Clear() const { return link_.KoruDone(clear_); }

private:
    const EscapeLink& link_;
    KoruCommand add_, delete_, clear_;
};

// Surfaces whose drawing is not recorded: always the one of the device context that carries the escape.
class DarkSurfaceControl {
public:
    explicit DarkSurfaceControl(const EscapeLink& link)
        : link_(link)
    {
    }

    bool Add() const { return link_.KoruDone(KoruCommand::AddDarkSurface); }
    bool Delete() const { return link_.KoruDone(KoruCommand::DeleteDarkSurface); }
    bool Clear() const { return link_.KoruDone(KoruCommand::ClearDarkSurfaces); }

private:
    const EscapeLink& link_;
};

enum class CacheType : std::uint32_t {
    Clip = 1,
    Surface = 2,
    Font = 4,
};

// Unique numbers of objects that the client holds; records mark them as cached.
class CacheControl {
public:
    explicit CacheControl(const EscapeLink& link)
        : link_(link)
    {
    }

    // The driver acts on item 0 alone; none when it did nothing.
    std::optional<bool> Add(CacheType type, std::uint32_t item) const;
    bool Delete(CacheType type, std::uint32_t item) const;
    // Sets the bits limits as well: the type's number as the pixels, and the mask.
    bool Clear(CacheType type, std::uint32_t bitsCallMask) const;

private:
    const EscapeLink& link_;
};

} // namespace koru::client
