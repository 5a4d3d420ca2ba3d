#pragma once

// Plays the records of a metafile: a table of what each type does, in parts by concern.

#include <map>
#include <string>

#include "engine/gdi/device_context.h"
#include "engine/gdi/metafile.h"

namespace engine::gdi {

struct PlayReport {
    // By name of the record type. A skipped one says why behind a colon, where the type alone does not;
    // all comments are "comment".
    std::map<std::string, unsigned> played, skipped;
};

// What records work on.
struct Playing {
    DeviceContext& dc;
    std::vector<Object> objects = {}; // by handle
    ULONG palette = 0; // handle of the selected one

    const Object& ObjectOf(ULONG handle) const; // throws CannotPlay when there is none
    void Create(ULONG handle, Object object);
    template<class T> const T& Get(ULONG handle) const
    {
        const T* const object = std::get_if<T>(&ObjectOf(handle));
        if (!object)
            throw CannotPlay("object of another kind");
        return *object;
    }
    mutable Object stock = {}; // the stock object asked for last
};

struct RecordHandler {
    ULONG type;
    const char* name;
    void (*play)(Playing& playing, const Bytes& record); // throws CannotPlay; null: not played
};

std::span<const RecordHandler> StateRecords();
std::span<const RecordHandler> ObjectRecords();
std::span<const RecordHandler> ShapeRecords();
std::span<const RecordHandler> PathRecords();
std::span<const RecordHandler> RegionRecords();
std::span<const RecordHandler> BitmapRecords();
std::span<const RecordHandler> TextRecords();

class MetafilePlayer {
public:
    MetafilePlayer(DeviceContext& dc, PlayReport& report);
    void Play(const Record& record);

private:
    Playing playing_;
    PlayReport& report_;
};

// The bitmap that a record's four words at `offset` tell of: where its header and its bits are, with sizes.
Dib DibOf(const Playing& playing, const Bytes& record, std::size_t offset, ULONG usage);

} // namespace engine::gdi
