#pragma once
// A registry, the machine it belongs to and a user at the boxes, as the rooms above meet them.
#include "TempStore.h"
#include "registry/ValueOperations.h"
#include "registry/machine/LocalMachines.h"
#include "support/ScriptedPort.h"
#include "support/TestPlatform.h"

namespace brenvik::test {

struct RegistryWorld {
    RegistryWorld() {
        store.createKey(Root::Users, "S-1-5-21-1-2-3-1003\\Software");
        store.createKey(Root::LocalMachine, "SOFTWARE");
        ctx.trace.setFile(dir / "brenvik.log");
        ctx.trace.setDebug(true);
        ctx.strLokalerRechner = "BRENVIK-PC";
        ctx.strRechnername = "BRENVIK-PC";
    }
    // The lines of the trace since the last call.
    std::vector<std::string> lines() {
        std::vector<std::string> all = traceLines(dir / "brenvik.log");
        std::vector<std::string> fresh(all.begin() + static_cast<std::ptrdiff_t>(seen), all.end());
        seen = all.size();
        return fresh;
    }
    TempDir dir;
    ScriptedPort port;
    TestPlatform platform;
    SqliteStore store{dir / "registry.db"};
    LocalMachines machines{store};
    RegistryContext ctx{port, platform, machines};
    std::size_t seen = 0;
};

}  // namespace brenvik::test
