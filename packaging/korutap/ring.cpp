#include "packaging/korutap/ring.h"

#include "platform/runtime.h"

namespace korutap {

void Ring::Clear()
{
    *this = Ring(bytes_, size_);
}

bool Ring::Put(const void* record, uint32_t length, int32_t flag)
{
    ++submitted_;
    if (length == 0)
        ++empty_;
    if (length > MostRecordBytes || sizeof(FrameHeader) + length > size_ || (length != 0 && !record)) {
        ++refused_;
        return false;
    }
    while (size_ - used_ < sizeof(FrameHeader) + length) {
        RemoveOldest();
        ++dropped_;
    }
    const FrameHeader header = {nextSequence_++, FrameMagic, length, flag};
    Append(&header, sizeof(header));
    Append(record, length);
    ++held_;
    return true;
}

uint32_t Ring::Take(void* target, uint32_t room)
{
    const uint32_t size = OldestSize();
    if (size == 0 || size > room)
        return 0;
    Copy(begin_, target, size);
    RemoveOldest();
    ++read_;
    return size;
}

Statistics Ring::Counts() const
{
    return {submitted_, read_, dropped_, refused_, empty_, held_, used_};
}

uint32_t Ring::OldestSize() const
{
    if (held_ == 0)
        return 0;
    FrameHeader header;
    Copy(begin_, &header, sizeof(header));
    return sizeof(header) + header.length;
}

void Ring::RemoveOldest()
{
    const uint32_t size = OldestSize();
    begin_ = (begin_ + size) % size_;
    used_ -= size;
    --held_;
}

void Ring::Append(const void* from, uint32_t length)
{
    if (length == 0)
        return;
    const uint32_t at = (begin_ + used_) % size_;
    const uint32_t toEnd = size_ - at < length ? size_ - at : length;
    memcpy(bytes_ + at, from, toEnd);
    memcpy(bytes_, static_cast<const uint8_t*>(from) + toEnd, length - toEnd);
    used_ += length;
}

void Ring::Copy(uint32_t at, void* target, uint32_t length) const
{
    const uint32_t toEnd = size_ - at < length ? size_ - at : length;
    memcpy(target, bytes_ + at, toEnd);
    memcpy(static_cast<uint8_t*>(target) + toEnd, bytes_, length - toEnd);
}

} // namespace korutap
