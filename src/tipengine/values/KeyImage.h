#pragma once
// Taking the image of a whole key, and telling it to somebody who builds it anew.
#include "registry/BVKRegistry.h"
#include "tipengine/values/Change.h"

namespace brenvik {

// The key (root "\\" key, no backslash at the end) with everything below it, as it stands now: an image for each place that
// holds some of it, by its real path. Below HKCR that are up to two, the user's and the machine's. One that is empty where
// the key is not there.
std::vector<KeyImage> keyImages(BVKRegistry& registry, const std::string& machine, const std::string& path);
// Of one real place.
KeyImage keyImage(RegStore& store, const std::string& machine, const RealKey& place);
void tellImage(const KeyImage& image, TreeSink& sink);

}  // namespace brenvik
