#include "tests/conformance/session.h"

#include <cstring>

#include "engine/core/exports.h"
#include "tests/support/driver_form.h"

namespace conformance {

namespace {

    Session* current = nullptr;

    LONG APIENTRY Qc()
    {
        ++current->qcCalls;
        return static_cast<LONG>(current->qcAnswer);
    }
    LONG APIENTRY Qd()
    {
        ++current->qdCalls;
        return 0;
    }
    LONG APIENTRY Qp(BYTE* record, ULONG length, LONG flag)
    {
        current->records.push_back({flag, length, {}});
        if (record)
            current->records.back().bytes.assign(record, record + length);
        return 0;
    }
    ULONG APIENTRY Gsd(LONG selector)
    {
        current->selectorsAsked.push_back(selector);
        return selector == 0 || selector == 1 ? current->identifiers[selector] : 0;
    }
    LONG APIENTRY Dsf()
    {
        ++current->dsfCalls;
        return 0;
    }

    template<class Function> ULONG AddressOf(engine::Seams& seams, const char* name, Function* function)
    {
        const PFN seam = seams.Add({name, reinterpret_cast<PFN>(function), engine::ArgumentBytes(function), true, {}});
        return reinterpret_cast<ULONG>(seam);
    }

} // namespace

ULONG SubmittedRecord::Word(ULONG offset) const
{
    ULONG word = 0xDEADBEEF;
    if (offset + sizeof(word) <= bytes.size())
        std::memcpy(&word, bytes.data() + offset, sizeof(word));
    return word;
}

Session::Session(const Setup& setup)
    : engine_(std::make_unique<engine::Engine>())
{
    current = this;
    engine::RegisterChainManager(setup.chain);
    engine::RegisterFrameBuffer(setup.frameBuffer);
    if (setup.options)
        engine_->RegisterModule(u"KORU.ini", {setup.options->begin(), setup.options->end()});
    support::RegisterDriverUnderTest();
    driver_ = std::make_unique<engine::DisplayDriver>(u"koru", setup.engineVersion);
    device_ = std::make_unique<engine::Device>(*driver_);
    if (!setup.enableDevice)
        return;
    if (!device_->Enable(setup.mode)) {
        ADD_FAILURE() << driver_->Error() << device_->Error() << "\n" << engine_->DebugOutput();
        return;
    }
    if (setup.installConsumer) {
        InstallConsumer();
        SetCaptureMask(0xFFFFFFFF);
        records.clear();
        selectorsAsked.clear();
    }
    engine_->ClearDebugOutput();
}

Session::~Session()
{
    device_.reset();
    driver_.reset();
    engine_->CheckGuards();
    if (!expectViolations)
        for (const std::string& violation : engine_->Violations())
            ADD_FAILURE() << "engine violation: " << violation;
    engine_.reset();
    current = nullptr;
}

Session& Session::Current()
{
    return *current;
}

engine::Surface* Session::Virtual()
{
    return engine::FindSurface(reinterpret_cast<HSURF>(Screen()->dhsurf));
}

engine::Surface* Session::Real()
{
    return engine::FrameBufferPicture(device_->Dhpdev());
}

ULONG Session::DhpdevNumber() const
{
    return reinterpret_cast<ULONG>(device_->Dhpdev());
}

ULONG Session::Escape(ULONG code, const std::vector<ULONG>& in, std::vector<ULONG>& out)
{
    std::vector<ULONG> input = in;
    const auto escape = Hook<PFN_DrvEscape>(INDEX_DrvEscape);
    return escape(Screen(), code, static_cast<ULONG>(input.size() * 4), input.data(),
                  static_cast<ULONG>(out.size() * 4), out.data());
}

ULONG Session::Escape(ULONG code, const std::vector<ULONG>& in)
{
    std::vector<ULONG> out(4, 0xDEADBEEF);
    Escape(code, in, out);
    return out[0];
}

ULONG Session::Command(ULONG subCommand, ULONG word1, ULONG word2)
{
    return Escape(KoruEscape, {subCommand, word1, word2, 0, 0, DhpdevNumber()});
}

ULONG Session::AddDarkZone(const RECTL& zone)
{
    return Escape(KoruEscape,
                  {3, static_cast<ULONG>(zone.left), static_cast<ULONG>(zone.top), static_cast<ULONG>(zone.right),
                   static_cast<ULONG>(zone.bottom), DhpdevNumber()});
}

ULONG Session::Zoom(ULONG code, ULONG id, const RECTL& values, ULONG a, ULONG b, ULONG c)
{
    return Escape(ZoomEscape,
                  {code, id, a, b, c, static_cast<ULONG>(values.left), static_cast<ULONG>(values.top),
                   static_cast<ULONG>(values.right), static_cast<ULONG>(values.bottom)});
}

void Session::InstallConsumer(ULONG answer)
{
    qcAnswer = answer;
    Escape(KoruEscape,
           {36, AddressOf(consumer_, "the consumer's QC", &Qc), AddressOf(consumer_, "the consumer's QD", &Qd),
            AddressOf(consumer_, "the consumer's QP", &Qp), AddressOf(consumer_, "the consumer's GSD", &Gsd),
            AddressOf(consumer_, "the consumer's DSF", &Dsf)});
}

SubmittedRecord Session::TakeOnlyRecord()
{
    EXPECT_EQ(records.size(), 1u);
    SubmittedRecord record = records.empty() ? SubmittedRecord{} : records.front();
    records.clear();
    return record;
}

std::string PictureOf(const engine::Surface& bitmap, const RECTL& part,
                      const std::vector<std::pair<ULONG, char>>& letters)
{
    std::string picture;
    for (LONG y = part.top; y < part.bottom; ++y) {
        for (LONG x = part.left; x < part.right; ++x) {
            const ULONG pixel = bitmap.Pixel(x, y);
            char letter = pixel == 0 ? '.' : '?';
            for (const auto& [value, character] : letters)
                if (value == pixel)
                    letter = character;
            picture += letter;
        }
        picture += '\n';
    }
    return picture;
}

testing::AssertionResult SamePixels(const engine::Surface& first, const engine::Surface& second)
{
    if (first.sizlBitmap.cx != second.sizlBitmap.cx || first.sizlBitmap.cy != second.sizlBitmap.cy)
        return testing::AssertionFailure() << "the sizes differ";
    for (LONG y = 0; y < first.sizlBitmap.cy; ++y)
        for (LONG x = 0; x < first.sizlBitmap.cx; ++x)
            if (first.Pixel(x, y) != second.Pixel(x, y))
                return testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is " << std::hex
                                                   << first.Pixel(x, y) << " and " << second.Pixel(x, y);
    return testing::AssertionSuccess();
}

} // namespace conformance
