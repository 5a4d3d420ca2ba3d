#include "engine/gdi/metafile.h"

#include <sstream>

namespace engine::gdi {

namespace {

    constexpr std::size_t RecordHeadSize = 8, SmallestHeader = 88, SignatureOffset = 40;
    constexpr ULONG Signature = 0x464D4520; // " EMF"

} // namespace

MetafileReader::MetafileReader(Bytes file, std::string name)
    : file_(file)
    , name_(std::move(name))
{
    if (!IsMetafile(file_)) {
        Fail("no metafile header");
        return;
    }
    const ULONG size = file_.Get<ULONG>(4);
    if (size < SmallestHeader || size > file_.Size())
        Fail("metafile header of a wrong size");
    else
        ReadHeader({EMR_HEADER, 0, file_.Part(0, size)});
}

bool MetafileReader::IsMetafile(Bytes file)
{
    return file.Size() >= SignatureOffset + sizeof(ULONG) && file.Get<ULONG>(0) == EMR_HEADER
        && file.Get<ULONG>(SignatureOffset) == Signature;
}

void MetafileReader::ReadHeader(const Record& record)
{
    header_.bounds = record.data.Get<RECTL>(8);
    header_.frame = record.data.Get<RECTL>(24);
    const ReferenceDevice device = {record.data.Get<SIZEL>(72), record.data.Get<SIZEL>(80)};
    // A device without a size says nothing about scales.
    if (device.pixels.cx > 0 && device.pixels.cy > 0 && device.millimetres.cx > 0 && device.millimetres.cy > 0)
        header_.device = device;
}

bool MetafileReader::Fail(const char* what)
{
    std::ostringstream message;
    message << name_ << ": offset 0x" << std::hex << at_ << ": " << what;
    error_ = message.str();
    return false;
}

bool MetafileReader::Next(Record& record)
{
    if (ended_ || !error_.empty())
        return false;
    if (file_.Size() - at_ < RecordHeadSize)
        return Fail("the file ends without an end record");
    const ULONG type = file_.Get<ULONG>(at_), size = file_.Get<ULONG>(at_ + 4);
    if (size < RecordHeadSize || size % 4 != 0)
        return Fail("record of a wrong size");
    if (size > file_.Size() - at_)
        return Fail("record reaches past the end of the file");
    record = {type, at_, file_.Part(at_, size)};
    at_ += size;
    ended_ = type == EMR_EOF;
    return true;
}

} // namespace engine::gdi
