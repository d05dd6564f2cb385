#include "registry/hive/HiveView.h"

namespace brenvik {

using namespace hivefmt;

namespace {

class Walk {
public:
    Walk(HiveView& hiveView, HiveVisitor& hiveVisitor) : view_(hiveView), visitor_(hiveVisitor) {}

    void run() {
        view_.claimCells();
        if (const auto root = view_.root()) key(*root, 1);
    }

private:
    void key(const HiveKeyRecord& record, std::size_t depth) {
        visitor_.enter(record);
        for (const HiveValueRecord& value : view_.values(record)) {
            if (value.name.units() > longestValueName) view_.findings().fault(place(value.offset), "Der Name des Wertes ist zu lang.");
            visitor_.value(value);
        }
        if (depth < deepest) {
            below(record, depth);
        } else if (record.subKeyCount != 0) {
            view_.findings().fault(place(record.offset), "Die Schlüssel sind zu tief geschachtelt.");
        }
        visitor_.leave();
    }

    void below(const HiveKeyRecord& record, std::size_t depth) {
        StoredName previous;
        for (const std::uint32_t offset : view_.subKeys(record)) {
            const auto child = view_.key(offset);
            if (!child || !usable(*child)) continue;
            if (child->parent != record.offset) view_.findings().fault(place(offset) + 4 + nk::Parent, "Der Schlüssel nennt einen anderen als übergeordnet.");
            const int order = previous.bytes.empty() ? -1 : compareStored(previous, child->name);
            if (order > 0) view_.findings().fault(place(offset), "Die Schlüssel stehen nicht in der Reihenfolge ihrer Namen.");
            if (order == 0) view_.findings().fault(place(offset), "Zwei Schlüssel haben denselben Namen.");
            previous = child->name;
            if (order != 0) key(*child, depth + 1);
        }
    }

    bool usable(const HiveKeyRecord& record) {
        const std::size_t units = record.name.units();
        if (units == 0 || units > longestKeyName) {
            view_.findings().fault(place(record.offset) + 4 + nk::NameSize, "Die Länge des Schlüsselnamens ist unmöglich.");
            return false;
        }
        for (std::size_t i = 0; i < units; ++i) {
            if (record.name.unit(i) != u'\\') continue;
            view_.findings().fault(place(record.offset) + 4 + nk::Name, "Der Name des Schlüssels enthält einen umgekehrten Schrägstrich.");
            return false;
        }
        return true;
    }

    static std::uint64_t place(std::uint32_t offset) { return std::uint64_t{headerSize} + offset; }
    HiveView& view_;
    HiveVisitor& visitor_;
};

}  // namespace

void walkHive(HiveView& view, HiveVisitor& visitor) { Walk(view, visitor).run(); }

}  // namespace brenvik
