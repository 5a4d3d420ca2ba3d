#pragma once

#include "capture/byte_cursor.h"

namespace koru {

// Appends encodings behind a record's fixed part and notes in its slots where each begins.
//
// An encoder takes the object, where to write and the room it is told, and gives the bytes it wrote,
// 0 for none. The room told follows the records' own arithmetic; writes and the record's length end
// at the room there is.
class RecordCursor {
public:
    template<class Record>
    RecordCursor(Record& record, ULONG room)
        : bytes_(reinterpret_cast<BYTE*>(&record), room > sizeof(Record) ? room : sizeof(Record))
        , told_(bytes_.Left())
    {
        bytes_.Advance(sizeof(Record));
        Charge(sizeof(Record));
    }

    // A null object, and one that its encoder left out, keep their slot as it is and cost nothing.
    template<class Object, class Encoder> void Append(ULONG& slot, Object* object, const Encoder& encode)
    {
        Charge(Place(slot, object, encode));
    }

    // Nothing follows it, so its size is not taken off.
    template<class Object, class Encoder> void AppendLast(ULONG& slot, Object* object, const Encoder& encode)
    {
        Place(slot, object, encode);
    }

    // The next encoder is told the room from before this object.
    template<class Object, class Encoder> void AppendWithoutCharge(ULONG& slot, Object* object, const Encoder& encode)
    {
        Place(slot, object, encode);
    }

    // Copied whole or not at all.
    void AppendBytes(ULONG& slot, const void* source, ULONG size)
    {
        if (!source || size == 0 || size > Room())
            return;
        slot = Offset();
        Write(source, size);
    }

    // The caller has made sure of the room.
    void Write(const void* source, ULONG size)
    {
        bytes_.Write(source, size);
        Charge(size);
    }

    // Copies as many whole elements as there is room for to where the next object will begin, which
    // then overwrites them: the cursor stays.
    void CopyAhead(const void* source, ULONG elementSize, ULONG count) const
    {
        const ULONG fitting = bytes_.Left() / elementSize;
        memcpy(bytes_.At(), source, elementSize * (count < fitting ? count : fitting));
    }

    void Advance(ULONG size) { bytes_.Advance(size); }
    void Charge(ULONG size) { told_ -= size < told_ ? size : told_; }

    ULONG Offset() const { return bytes_.Offset(); }
    ULONG Room() const { return told_ < bytes_.Left() ? told_ : bytes_.Left(); }
    ULONG LastSize() const { return lastSize_; } // what the last encoder called gave

    // Fills the header in. The record's length.
    ULONG Finish(ULONG callType) const;

private:
    template<class Object, class Encoder> ULONG Place(ULONG& slot, Object* object, const Encoder& encode)
    {
        if (!object)
            return 0;
        lastSize_ = encode(object, bytes_.At(), Room());
        if (lastSize_ == 0)
            return 0;
        slot = Offset();
        bytes_.Advance(lastSize_);
        return lastSize_;
    }

    ByteCursor bytes_;
    ULONG told_;
    ULONG lastSize_ = 0;
};

} // namespace koru
