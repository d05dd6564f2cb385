#include "registry/store/SqliteTreeSink.h"

#include "frame/Errors.h"
#include "registry/store/RegLimits.h"

namespace brenvik {

namespace {

void requireWritable(const KeyRef& key) {
    if (key.readOnly) throw RegError(regerr::NoAccess, "Der Schlüssel darf nur gelesen werden.");
}

}  // namespace

void SqliteTreeSink::enter(std::string_view name, const KeyDetails& details) {
    if (open_.size() >= MaxKeyDepth) throwTooDeep();
    if (open_.empty()) {
        change(top_, details);
        open_.push_back({top_.id, !tables_.hasChildren(top_.id) && tables_.values(top_.id).empty()});
        return;
    }
    checkKeyName(name);
    const std::string folded = foldedBytesOf(name);
    const OpenKey& parent = open_.back();
    if (!parent.fresh) {
        if (const auto there = tables_.child(parent.id, folded)) {
            change(*there, details);
            open_.push_back({there->id, false});
            return;
        }
    }
    KeyDetails stamped = details;
    if (stamped.written == KeyDetails::NoTime) stamped.written = now_;
    open_.push_back({tables_.insertWhole(parent.id, folded, name, stamped, descriptorNumber(details.descriptor)), true});
}

void SqliteTreeSink::change(const KeyRef& key, const KeyDetails& details) {
    requireWritable(key);
    KeyDetails merged = tables_.details(key.id);
    if (!details.className.empty()) merged.className = details.className;
    if (!details.descriptor.empty()) merged.descriptor = details.descriptor;
    if (details.flags != 0) merged.flags = details.flags;
    if (details.userFlags != 0) merged.userFlags = details.userFlags;
    merged.written = details.written != KeyDetails::NoTime ? details.written : now_;
    tables_.setDetails(key.id, merged);
    told_.push_back(key.id);
}

void SqliteTreeSink::value(std::string_view name, const RawValue& value) {
    checkValue(name, value);
    const std::string folded = foldedBytesOf(name);
    if (open_.back().fresh) {
        tables_.insertValue(open_.back().id, folded, name, value);
    } else {
        tables_.putValue(open_.back().id, folded, name, value);
    }
}

// Neighbours mostly have the same descriptor.
std::int64_t SqliteTreeSink::descriptorNumber(const Bytes& bytes) {
    if (bytes.empty()) return 0;
    if (lastNumber_ != 0 && bytes == lastDescriptor_) return lastNumber_;
    const auto [at, fresh] = descriptors_.try_emplace(std::string(bytes.begin(), bytes.end()));
    if (fresh) at->second = tables_.keepDescriptor(bytes);
    lastDescriptor_ = bytes;
    lastNumber_ = at->second;
    return lastNumber_;
}

}  // namespace brenvik
