#include "tipengine/Schluesselbild.h"

namespace brenvik {

SchluesselBild schluesselBild(BVKRegistry& registry, const std::string& machine, const std::string& path) {
    SchluesselBild bild{machine, path, {}, {}};
    std::vector<std::string> open{std::string()};
    for (std::size_t next = 0; next < open.size(); ++next) {
        const std::string below = open[next];
        bild.unterschluessel.push_back(below);
        registry.SetPath(machine, path + below + "\\");
        for (NamedValue& value : registry.ListRaw()) bild.werte.push_back({below, std::move(value)});
        for (const std::string& name : registry.EnumSubKeys()) open.push_back(below + "\\" + name);
    }
    return bild;
}

}  // namespace brenvik
