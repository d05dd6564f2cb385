#pragma once
// The changed files of one transaction, written all or none.
#include <vector>

#include "registry/hivefile/HiveFile.h"

namespace brenvik {

// Each file as a new one beside its own; when all are ready they take their places. The folders are locked meanwhile, so that of
// two programs that have read the same state one is refused. Throws RegError. Before the plan of several files stands
// nothing has been written; behind that the message says that the next reading finishes it.
void writeTogether(const std::vector<HiveFile*>& files);

}  // namespace brenvik
