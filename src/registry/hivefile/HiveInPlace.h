#pragma once
// A hive told straight from the bytes of its file, for what only reads all of it: that is quicker than building the tree
// first and takes no memory beside the bytes.
#include "registry/hive/HiveFormat.h"
#include "registry/store/RegStore.h"

namespace brenvik {

// Tells what the tree of the file would tell, with the same checks. Throws HiveError at the first fault, when a part has
// been told already; a sound file has none.
void tellHive(hivefmt::ByteSpan file, TreeSink& sink);
void requireSoundHive(hivefmt::ByteSpan file);

}  // namespace brenvik
