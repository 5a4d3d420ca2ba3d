#pragma once

// Enhanced metafiles, record by record.

#include <string>

#include "engine/gdi/bytes.h"
#include "engine/gdi/mapping.h"

namespace engine::gdi {

struct MetafileHeader {
    RECTL bounds = {}; // of what is drawn, in pixels of the device that it was made for; inclusive
    RECTL frame = {}; // of the picture, in hundredths of a millimetre
    ReferenceDevice device;
};

struct Record {
    ULONG type = 0;
    std::size_t offset = 0;
    Bytes data; // the whole record, type and size first
};

class MetafileReader {
public:
    // `name` starts the error message; the bytes stay the caller's.
    MetafileReader(Bytes file, std::string name);

    static bool IsMetafile(Bytes file);

    const MetafileHeader& Header() const { return header_; }
    // The header record is the first one. False after the end record, and at the first damage.
    bool Next(Record& record);
    // "name: offset 0x…: what"; empty as long as all is well.
    const std::string& Error() const { return error_; }

private:
    bool Fail(const char* what);
    void ReadHeader(const Record& record);

    Bytes file_;
    std::string name_;
    std::size_t at_ = 0;
    bool ended_ = false;
    MetafileHeader header_;
    std::string error_;
};

constexpr ULONG EMR_HEADER = 1, EMR_EOF = 14;

} // namespace engine::gdi
