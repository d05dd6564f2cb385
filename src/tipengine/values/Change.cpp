#include "tipengine/values/Change.h"

namespace brenvik {

void selectValue(BVKRegistry& registry, const ValueChange& change) {
    if (change.name)
        registry.SetValuePath(change.machine, change.path, *change.name);
    else
        registry.SetPath(change.machine, change.path);
}

RegPath placeOf(const ValueChange& change) {
    if (!change.name) return parseRegPath(change.path);
    RegPath place = parseRegPath(change.path + "\\");
    place.isKey = false;
    place.name = ValueName::named(*change.name);
    return place;
}

}  // namespace brenvik
