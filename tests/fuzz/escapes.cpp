#include "tests/fuzz/escapes.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "tests/fuzz/drawing.h"

namespace fuzz {

namespace {

    namespace client = koru::client;

    constexpr ULONG KoruCode = static_cast<ULONG>(client::Escape::Koru);
    constexpr ULONG ZoomCode = static_cast<ULONG>(client::Escape::Zoom);
    constexpr ULONG ChainCode = static_cast<ULONG>(client::Escape::Chain);
    constexpr ULONG InstallFunctions = static_cast<ULONG>(client::KoruCommand::InitializeFunctions2);

    constexpr std::size_t KoruSize = 6, ZoomSize = 9, OutSize = 4; // words
    constexpr std::size_t ChainSize = 272; // bytes
    constexpr BYTE Behind = 0xB7; // stands behind every buffer
    constexpr std::size_t BehindSize = 16;

    // A buffer that is looked at afterwards.
    class Buffer {
    public:
        explicit Buffer(const std::vector<BYTE>& content)
            : bytes_(content)
            , size_(content.size())
        {
            bytes_.insert(bytes_.end(), BehindSize, Behind);
        }
        void* At() { return bytes_.data(); }
        bool IsWhole() const
        {
            return std::all_of(bytes_.begin() + static_cast<std::ptrdiff_t>(size_), bytes_.end(),
                               [](BYTE byte) { return byte == Behind; });
        }
        ULONG FirstWord() const
        {
            ULONG word = 0;
            std::memcpy(&word, bytes_.data(), std::min(size_, sizeof(word)));
            return word;
        }

    private:
        std::vector<BYTE> bytes_;
        std::size_t size_;
    };

    void Keep(std::vector<ULONG>& numbers, ULONG number)
    {
        constexpr std::size_t most = 12;
        numbers.push_back(number);
        if (numbers.size() > most)
            numbers.erase(numbers.begin());
    }

    std::vector<BYTE> BytesOf(const std::vector<ULONG>& words)
    {
        const auto* const first = reinterpret_cast<const BYTE*>(words.data());
        return {first, first + words.size() * sizeof(ULONG)};
    }

    std::vector<ULONG> CodesOf(client::Escape escape)
    {
        std::vector<ULONG> codes;
        for (const client::CommandInfo& command : client::Commands())
            if (command.escape == escape)
                codes.push_back(command.code);
        return codes;
    }

    ULONG AnyCommand(Input& input, client::Escape escape)
    {
        static const std::vector<ULONG> koru = CodesOf(client::Escape::Koru), zoom = CodesOf(client::Escape::Zoom);
        const std::vector<ULONG>& codes = escape == client::Escape::Koru ? koru : zoom;
        return input.OneIn(16) ? input.Word() : codes[input.Below(static_cast<ULONG>(codes.size()))];
    }

} // namespace

ULONG Escapes::Argument()
{
    const ULONG kind = input_.Below(8);
    if (kind < 3 && !answers_.empty())
        return answers_[input_.Below(static_cast<ULONG>(answers_.size()))];
    if (kind == 3)
        return reinterpret_cast<ULONG>(machine_.Device().Dhpdev());
    return kind < 6 ? static_cast<ULONG>(input_.Coordinate()) : input_.Number();
}

std::vector<ULONG> Escapes::KoruWords()
{
    std::vector<ULONG> words = {AnyCommand(input_, client::Escape::Koru)};
    while (words.size() < KoruSize)
        words.push_back(Argument());
    if (!input_.OneIn(4))
        words.back() = reinterpret_cast<ULONG>(machine_.Device().Dhpdev());
    if (words[0] != InstallFunctions)
        return words;
    // What a client installs is called: it can only be ours, or nothing.
    const std::vector<ULONG> functions = Machine::ConsumerFunctions();
    for (std::size_t i = 0; i < functions.size(); ++i)
        words[1 + i] = input_.OneIn(4) ? 0 : functions[i];
    return words;
}

std::vector<ULONG> Escapes::ZoomWords()
{
    std::vector<ULONG> words = {AnyCommand(input_, client::Escape::Zoom)};
    const bool known = !zoomers_.empty() && !input_.OneIn(8);
    words.push_back(known ? zoomers_[input_.Below(static_cast<ULONG>(zoomers_.size()))] : Argument());
    while (words.size() < ZoomSize)
        words.push_back(Argument());
    return words;
}

ULONG Escapes::Send(SURFOBJ* pso, ULONG code, std::vector<BYTE> in, std::size_t outSize)
{
    const auto escape = machine_.Hook<PFN_DrvEscape>(INDEX_DrvEscape);
    const bool shared = input_.OneIn(4);
    if (shared)
        in.resize(std::max(in.size(), outSize));
    Buffer input(in), output(std::vector<BYTE>(outSize, 0xDE));
    void* const pvIn = make_.Or(32, input.At());
    void* const pvOut = shared ? pvIn : make_.Or(32, output.At());
    escape(pso, code, static_cast<ULONG>(in.size()), pvIn, static_cast<ULONG>(outSize), pvOut);
    if (!input.IsWhole() || !output.IsWhole())
        Fail("an escape wrote behind a buffer");
    return (shared ? input : output).FirstWord();
}

void Escapes::SendWords(ULONG code, const std::vector<ULONG>& words)
{
    std::vector<BYTE> in = BytesOf(words);
    std::size_t outSize = OutSize * sizeof(ULONG);
    if (input_.OneIn(8)) // too short, too long
        in.resize(input_.Byte());
    if (input_.OneIn(8))
        outSize = input_.Below(24);
    SURFOBJ* const pso = input_.OneIn(4) ? make_.Target() : machine_.Screen();
    const ULONG answer = Send(pso, code, in, outSize);
    Keep(words[0] == static_cast<ULONG>(client::ZoomCommand::Create) ? zoomers_ : answers_, answer);
    machine_.Check(code == KoruCode ? "KORU_ESCAPE" : "KORU_ZOOM_ESCAPE");
}

void Escapes::SendKoru()
{
    SendWords(KoruCode, KoruWords());
}

void Escapes::SendAnyZoom()
{
    SendWords(ZoomCode, ZoomWords());
}

ULONG Escapes::SendZoom(client::ZoomCommand command, ULONG id, const RECTL& values, ULONG c)
{
    ULONG words[ZoomSize] = {static_cast<ULONG>(command),
                             id,
                             0,
                             0,
                             c,
                             static_cast<ULONG>(values.left),
                             static_cast<ULONG>(values.top),
                             static_cast<ULONG>(values.right),
                             static_cast<ULONG>(values.bottom)};
    ULONG output[OutSize] = {};
    machine_.Hook<PFN_DrvEscape>(INDEX_DrvEscape)(machine_.Screen(), ZoomCode, sizeof(words), words, sizeof(output),
                                                  output);
    machine_.Check("a sound KORU_ZOOM_ESCAPE");
    return output[0];
}

void Escapes::SendChain()
{
    std::vector<BYTE> in(ChainSize);
    const std::string name = input_.OneIn(4) ? std::string(264, 'k') : "koru";
    std::copy(name.begin(), name.end(), in.begin());
    const ULONG function = input_.OneIn(2) ? 1 : input_.OneIn(2) ? 0xFFFFF : input_.Number();
    std::memcpy(&in[264], &function, sizeof(function));
    if (input_.OneIn(4))
        in.resize(input_.Half() % 300);
    const std::size_t outSize = input_.Below(12); // also where both buffers are one, that is as long as the input
    if (in.size() < ChainSize)
        machine_.SemaphoreStaysHeld();
    Send(make_.Target(), ChainCode, in, outSize);
    machine_.Check("DCM_STANDARD_ESCAPE");
}

// The code is read whatever the size says.
void Escapes::SendQuery()
{
    const ULONG codes[] = {QUERYESCSUPPORT, KoruCode, ZoomCode, ChainCode, input_.Word()};
    const ULONG cjIn = input_.Below(9), cjOut = input_.Below(5);
    std::vector<BYTE> in(std::max<std::size_t>(cjIn, sizeof(ULONG))), out(cjOut + 1);
    std::memcpy(in.data(), &input_.Of(codes), sizeof(ULONG));
    machine_.Hook<PFN_DrvEscape>(INDEX_DrvEscape)(make_.Target(), QUERYESCSUPPORT, cjIn, make_.Or(8, in.data()), cjOut,
                                                  make_.Or(8, out.data()));
    machine_.Check("QUERYESCSUPPORT");
}

void Escapes::SendOther()
{
    ULONG code = input_.Word();
    if (code == QUERYESCSUPPORT || code == ChainCode)
        ++code;
    const std::vector<BYTE> in(input_.OneIn(16) ? 70000 : input_.Byte());
    Send(make_.Target(), code, in, input_.OneIn(16) ? 70000 : input_.Byte());
    machine_.Check("a foreign escape");
}

// For the coming calls, until it is over.
void Escapes::RunShort()
{
    constexpr engine::Request requests[] = {engine::Request::Memory, engine::Request::Lock,
                                            engine::Request::CreateSurface, engine::Request::Associate};
    if (input_.OneIn(2))
        machine_.Engine().Fail(input_.Of(requests), 1 + input_.Below(6), input_.OneIn(4));
    else
        machine_.Engine().StopFailing();
}

void Escapes::PassTime()
{
    machine_.Engine().AdvanceMilliseconds(input_.OneIn(8) ? input_.Coordinate() : static_cast<LONG>(input_.Byte()));
}

void Escapes::ChangeMode()
{
    DeleteDeviceBitmaps(make_);
    machine_.ChangeMode(input_);
    machine_.Check("a change of mode");
}

// What moves needs a zoomer that has nothing left to show.
void Escapes::ScrollZoomer()
{
    if (zoomers_.empty())
        return;
    const ULONG id = zoomers_[input_.Below(static_cast<ULONG>(zoomers_.size()))];
    const LONG dx = static_cast<LONG>(input_.Below(32)) - 16, dy = static_cast<LONG>(input_.Below(32)) - 16;
    SendZoom(client::ZoomCommand::Refresh, id, {});
    SendZoom(client::ZoomCommand::Update, id, {});
    SendZoom(client::ZoomCommand::Scroll, id, input_.OneIn(2) ? RECTL{dx, 0, 0, 0} : RECTL{dx, dy, 0, 0});
}

// A picture or a mask over the screen, taken from the screen itself.
void Escapes::AddOverlay()
{
    constexpr ULONG mask = 0xFFFFFFFF;
    const ULONG selector = input_.OneIn(2) ? mask : input_.Byte() << 16;
    SendZoom(client::ZoomCommand::SetWiseSurface, 0, input_.Rectangle(), selector);
    SendZoom(client::ZoomCommand::Update, 0, {});
}

void Escapes::Make()
{
    struct Row {
        ULONG share; // of 64
        void (Escapes::*make)();
    };
    constexpr Row rows[] = {
        {18, &Escapes::SendKoru}, {28, &Escapes::SendAnyZoom}, {2, &Escapes::SendChain},  {2, &Escapes::SendQuery},
        {2, &Escapes::SendOther}, {2, &Escapes::RunShort},     {2, &Escapes::PassTime},   {1, &Escapes::ChangeMode},
        {2, &Escapes::AddZoomer}, {2, &Escapes::ScrollZoomer}, {3, &Escapes::AddOverlay},
    };
    ULONG place = input_.Below(64);
    const Row* row = rows;
    while (place >= row->share)
        place -= (row++)->share;
    (this->*row->make)();
    make_.Forget();
}

void Escapes::Begin()
{
    machine_.Engine().StopFailing();
    if (input_.OneIn(4))
        ChangeMode();
    else if (!input_.OneIn(4))
        SendZoom(client::ZoomCommand::Flush, 0, {});
    machine_.StartCapture();
    machine_.Check("capture on");
    AddZoomers();
}

void Escapes::AddZoomers()
{
    for (ULONG zoomers = input_.Below(4); zoomers > 0; --zoomers)
        AddZoomer();
}

void Escapes::AddZoomer()
{
    using enum client::ZoomCommand;
    const ULONG id = SendZoom(Create, 0, {});
    Keep(zoomers_, id);
    SendZoom(SetOriginalRect, id, input_.Rectangle());
    SendZoom(SetZoomedRect, id, input_.Rectangle());
    constexpr std::pair<client::ZoomCommand, ULONG> properties[] = {
        {SetXFactor, 6}, {SetYFactor, 6}, {SetImproveFactor, 5}, {SetBehaviour, 3},
        {SetMode, 3},    {SetStyle, 2},   {SetBorder, 32},       {SetPickColor, 2},
    };
    for (const auto& [command, values] : properties)
        SendZoom(command, id, {static_cast<LONG>(input_.Below(values)), 0, 0, 0});
    SendZoom(SetState, id, {1, 0, 0, 0});
}

} // namespace fuzz
