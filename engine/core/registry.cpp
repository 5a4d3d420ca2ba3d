#include <atomic>
#include <mutex>
#include <unordered_set>

#include "engine/core/engine.h"
#include "engine/core/objects.h"

namespace engine {

namespace {

    struct Registry {
        std::mutex mutex;
        std::unordered_set<const void*> objects;
    };

    // Never destroyed: objects may outlive every engine.
    Registry& TheRegistry()
    {
        static Registry* const registry = new Registry;
        return *registry;
    }

    // The registered address is that of the whole object, of which the public part is the first base.
    template<class Object, class Public> Object* Behind(const Public* given, const char* type)
    {
        if (!given)
            return nullptr;
        auto* const object = static_cast<Object*>(const_cast<Public*>(given));
        if (IsRegistered(object))
            return object;
        if (Engine::Exists())
            Engine::Current().Report(std::string("a foreign ") + type);
        return nullptr;
    }

} // namespace

void RegisterObject(void* object)
{
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.objects.insert(object);
}

void ForgetObject(const void* object)
{
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.objects.erase(object);
}

bool IsRegistered(const void* object)
{
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    return registry.objects.contains(object);
}

ClipObject* ClipBehind(const CLIPOBJ* pco)
{
    return Behind<ClipObject>(pco, "CLIPOBJ");
}

Translation* TranslationBehind(const XLATEOBJ* pxlo)
{
    return Behind<Translation>(pxlo, "XLATEOBJ");
}

Brush* BrushBehind(const BRUSHOBJ* pbo)
{
    return Behind<Brush>(pbo, "BRUSHOBJ");
}

Path* PathBehind(const PATHOBJ* ppo)
{
    return Behind<Path>(ppo, "PATHOBJ");
}

Text* TextBehind(const STROBJ* pstro)
{
    return Behind<Text>(pstro, "STROBJ");
}

Font* FontBehind(const FONTOBJ* pfo)
{
    return Behind<Font>(pfo, "FONTOBJ");
}

PaletteObject* PaletteBehind(const PALOBJ* ppalo)
{
    return Behind<PaletteObject>(ppalo, "PALOBJ");
}

ULONG NextUniqueNumber()
{
    static std::atomic<ULONG> last = 0;
    return ++last;
}

} // namespace engine
