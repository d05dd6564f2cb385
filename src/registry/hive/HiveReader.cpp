#include "registry/hive/HiveReader.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "registry/Upcase.h"
#include "registry/hive/HiveLog.h"
#include "registry/hive/HiveNames.h"
#include "registry/hive/HiveView.h"

namespace brenvik {

using namespace hivefmt;

namespace {

class TreeBuilder final : public HiveVisitor {
public:
    TreeBuilder(HiveView& hiveView, Hive& target) : view_(hiveView), hive_(target) {}

    void enter(const HiveKeyRecord& record) override {
        if (open_.empty()) {
            open_.push_back(&hive_.root);
        } else {
            std::vector<HiveKey>& siblings = open_.back()->subKeys;
            if (siblings.empty()) siblings.reserve(expected_.back());
            open_.push_back(&siblings.emplace_back());
        }
        expected_.push_back(trusted() ? record.subKeyCount : 0);
        offsets_.push_back(record.offset);
        HiveKey& key = *open_.back();
        key.name = textOf(record.name);
        key.className = textOf({record.className, false});
        key.lastWrite = record.lastWrite;
        key.accessBits = record.accessBits;
        key.userFlags = record.userFlags;
        key.flags = record.flags & static_cast<std::uint16_t>(~(nk::Latin1Name | nk::HiveEntry));
        key.security = security(record);
        key.predefinedHandle = record.predefinedHandle;
        if (record.valueCount != 0 && trusted()) key.values.reserve(std::min<std::size_t>(record.valueCount, view_.cells().cell(record.valueList).size() / 4));
    }

    void value(const HiveValueRecord& record) override {
        HiveValue value;
        if (!view_.data(record, value.data.bytes)) return;
        value.name = textOf(record.name);
        value.data.type = record.type;
        open_.back()->values.push_back(std::move(value));
    }

    void leave() override {
        if (const std::size_t twin = secondOfSameName(open_.back()->values); twin != noTwin) {
            view_.findings().fault(std::uint64_t{headerSize} + offsets_.back(), twinMessage);
            dropTwins(open_.back()->values);
        }
        if (view_.findings().salvaging()) keepOrder(open_.back()->subKeys);
        open_.pop_back();
        expected_.pop_back();
        offsets_.pop_back();
    }

private:
    // Counts of a damaged file say nothing; those of a strict reading have been compared with the lists.
    bool trusted() const { return !view_.findings().salvaging(); }

    std::uint32_t security(const HiveKeyRecord& record) {
        if (record.security == noCell) return HiveKey::NoSecurity;
        const auto known = byOffset_.find(record.security);
        if (known != byOffset_.end()) return known->second;
        const ByteSpan bytes = view_.descriptor(record);
        std::uint32_t index = HiveKey::NoSecurity;
        if (!bytes.empty()) {
            const std::string content(bytes.begin(), bytes.end());
            const auto [at, fresh] = byContent_.try_emplace(content, static_cast<std::uint32_t>(hive_.descriptors.size()));
            if (fresh) hive_.descriptors.emplace_back(bytes.begin(), bytes.end());
            index = at->second;
        }
        byOffset_.emplace(record.security, index);
        return index;
    }

    // A damaged list may name keys in a wrong order and twice; the tree's look-up needs them ordered and single.
    static void keepOrder(std::vector<HiveKey>& keys) {
        const auto below = [](const HiveKey& l, const HiveKey& r) { return compareNames(l.name, r.name) < 0; };
        if (std::is_sorted(keys.begin(), keys.end(), below) && std::adjacent_find(keys.begin(), keys.end(), sameKey) == keys.end()) return;
        std::stable_sort(keys.begin(), keys.end(), below);
        keys.erase(std::unique(keys.begin(), keys.end(), sameKey), keys.end());
    }
    static bool sameKey(const HiveKey& l, const HiveKey& r) { return sameName(l.name, r.name); }

    HiveView& view_;
    Hive& hive_;
    std::vector<HiveKey*> open_;
    std::vector<std::size_t> expected_;
    std::vector<std::uint32_t> offsets_;
    std::unordered_map<std::uint32_t, std::uint32_t> byOffset_;
    std::unordered_map<std::string, std::uint32_t> byContent_;
};

}  // namespace

HiveReading readHive(ByteSpan file, HiveMode mode) {
    HiveReading reading;
    HiveFindings findings(mode);
    HiveView view(file, findings);
    Hive& hive = reading.hive;
    const std::uint8_t* const base = view.cells().base();
    hive.minorVersion = view.cells().minorVersion();
    hive.sequence = get32(base + header::Sequence1);
    hive.lastWritten = get64(base + header::LastWritten);
    hive.binsSize = view.cells().binsSize();
    hive.header.assign(base, base + headerSize);
    TreeBuilder builder(view, hive);
    walkHive(view, builder);
    reading.findings = findings.list();
    return reading;
}

HiveReading readHive(ByteSpan file, const std::vector<ByteSpan>& logs, HiveMode mode) {
    if (!isDirty(file)) return readHive(file, mode);
    HiveRecovery recovery = replayLogs(file, logs);
    HiveReading reading = readHive(recovery.hive, mode);
    reading.findings.insert(reading.findings.begin(), recovery.findings.begin(), recovery.findings.end());
    return reading;
}

}  // namespace brenvik
