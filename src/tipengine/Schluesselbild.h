#pragma once
// Taking the image of a whole key, and telling it to somebody who builds it anew.
#include "registry/BVKRegistry.h"
#include "tipengine/Aenderung.h"

namespace brenvik {

// The key (root "\\" key, no backslash at the end) with everything below it, as it stands now.
SchluesselBild schluesselBild(BVKRegistry& registry, const std::string& machine, const std::string& path);
void tellImage(const SchluesselBild& image, TreeSink& sink);

}  // namespace brenvik
