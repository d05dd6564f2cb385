#include "registry/creg/CregReader.h"

#include <algorithm>

#include "registry/Upcase.h"
#include "registry/creg/CregText.h"
#include "registry/creg/CregView.h"
#include "registry/hive/HiveNames.h"
#include "registry/store/RegStore.h"

namespace brenvik {

namespace {

class CregTreeBuilder final : public CregVisitor {
public:
    CregTreeBuilder(CregView& view, HiveKey& root) : view_(view), root_(root) {}

    void enter(const CregSlot& slot, const std::optional<CregRecord>& record) override {
        open_.push_back(open_.empty() ? &root_ : &open_.back()->subKeys.emplace_back());
        places_.push_back(cregfmt::headerSize + std::uint64_t{slot.at});
        HiveKey& key = *open_.back();
        key.lastWrite = KeyDetails::NoTime;
        if (!record) return;
        key.name = cregName(record->name);
        const std::vector<CregValue> values = view_.values(*record);
        key.values.reserve(values.size());
        for (const CregValue& value : values) key.values.push_back({cregName(value.name), cregValue(value.type, value.data)});
    }

    void leave() override {
        HiveKey& key = *open_.back();
        const auto below = [](const HiveKey& l, const HiveKey& r) { return compareNames(l.name, r.name) < 0; };
        const auto same = [](const HiveKey& l, const HiveKey& r) { return sameName(l.name, r.name); };
        std::stable_sort(key.subKeys.begin(), key.subKeys.end(), below);
        const auto twins = std::unique(key.subKeys.begin(), key.subKeys.end(), same);
        const bool hasTwins = twins != key.subKeys.end() || secondOfSameName(key.values) != noTwin;
        if (hasTwins) {
            view_.findings().note(places_.back(), "Unterschlüssel oder Werte dieses Schlüssels haben denselben Namen; gezeigt wird der erste.");
            key.subKeys.erase(twins, key.subKeys.end());
            dropTwins(key.values);
        }
        key.subKeys.shrink_to_fit();
        open_.pop_back();
        places_.pop_back();
    }

private:
    CregView& view_;
    HiveKey& root_;
    std::vector<HiveKey*> open_;
    std::vector<std::uint64_t> places_;
};

}  // namespace

HiveReading readCreg(cregfmt::ByteSpan file, HiveMode mode) {
    if (file.size() > MaxCregFile) throw HiveError(0, "Die Datei ist zu groß für eine Registrydatei von Windows 95, 98 oder ME.");
    HiveReading reading;
    HiveFindings findings(mode);
    CregView view(file, findings);
    CregTreeBuilder builder(view, reading.hive.root);
    walkCreg(view, builder);
    reading.findings = findings.list();
    return reading;
}

}  // namespace brenvik
