#pragma once

#include <list>
#include <map>
#include <vector>

#include "engine/core/engine.h"
#include "engine/loader/seams.h"

namespace engine {

// All that is called between a mapped driver and what surrounds it, each function behind a seam: the driver's
// entry points; the engine's services, imported or found by name; the chain manager; the driver behind.
class Boundary {
public:
    // The driver's DrvEnableDriver as the engine is to call it. The table that it answers is replaced.
    PFN EnableDriver(PFN function);
    // The engine's services as the driver is to import them.
    Exports Services();

private:
    PFN Add(SeamFunction function);
    PFN Service(const std::string& name, PFN function);
    PFN Enable(const std::string& owner, PFN function);
    void ReplaceTable(const std::string& owner, DRVENABLEDATA& data);
    PFN Found(bool ofEngine, const std::string& name, PFN function);

    Seams seams_;
    std::map<std::pair<std::string, PFN>, PFN> added_;
    std::list<std::vector<DRVFN>> tables_;
};

} // namespace engine
