#include "registry/store/StoreWalk.h"

#include <sqlite3.h>

#include <algorithm>

#include "registry/store/RegLimits.h"

namespace brenvik {

namespace {

constexpr std::int64_t CheckedFrom = 10000;   // keys; counting all of them takes longer than telling a few

}  // namespace

StoreWalk::StoreWalk(sqlite::Database& database, StoreTables& tables)
    : tables_(tables),
      keys_(database, "SELECT parent, id, name, class, written, descriptor, readonly, folded, flags, userflags FROM key WHERE parent >= ?1 ORDER BY parent, folded"),
      valueIds_(database, "SELECT key, id FROM value WHERE key >= ?1 ORDER BY key"),
      values_(database, "SELECT id, name, type, bytes, folded FROM value WHERE id >= ?1 ORDER BY id"),
      most_(CheckedFrom) {}

bool StoreWalk::Rows::at(std::int64_t number) {
    if (!use_ || number < from_ || (!ended_ && current_ < number)) {
        use_.reset();   // before the new use, which it would end
        use_.emplace(statement_);
        use_->bind(1, number);
        from_ = number;
        step();
    }
    return !ended_ && current_ == number;
}

bool StoreWalk::Rows::next() {
    const std::int64_t number = current_;
    if (step() && current_ == number) return true;
    from_ = number + 1;
    return false;
}

bool StoreWalk::Rows::step() {
    ended_ = !use_->step();
    if (!ended_) current_ = use_->number(0);
    return !ended_;
}

// In a damaged file a key can stand below itself, or one below many.
void StoreWalk::countTold() {
    if (++told_ <= most_) return;
    most_ = tables_.keyCount();
    if (told_ > most_) throw sqlite::Error(SQLITE_CORRUPT, "circle");
}

void StoreWalk::below(std::int64_t key, TreeSink& sink) {
    struct Level {
        std::vector<Child> children;
        std::size_t next = 0;
    };
    values(key, sink);
    std::vector<Level> open(1);
    open.back().children = children(key);
    while (true) {
        Level& level = open.back();
        if (level.next == level.children.size()) {
            open.pop_back();
            if (open.empty()) return;
            sink.leave();
            continue;
        }
        const Child& child = level.children[level.next++];
        if (open.size() > MaxKeyDepth) throwTooDeep();
        countTold();
        sink.enter(child.name, child.details);
        values(child.id, sink);
        std::vector<Child> below = children(child.id);
        open.push_back({std::move(below), 0});
    }
}

// In the order they were made.
void StoreWalk::values(std::int64_t key, TreeSink& sink) {
    ids_.clear();
    for (bool more = valueIds_.at(key); more; more = valueIds_.next()) ids_.push_back(valueIds_.row().number(1));
    std::sort(ids_.begin(), ids_.end());
    for (const std::int64_t id : ids_) {
        if (!values_.at(id)) continue;
        values_.row().text(1, name_);
        values_.row().blob(4, folded_);
        values_.row().bytes(3, value_.bytes);
        value_ = requireValue(name_, folded_, values_.row().number(2), std::move(value_.bytes));
        values_.next();
        sink.value(name_, value_);
    }
}

std::vector<StoreWalk::Child> StoreWalk::children(std::int64_t key) {
    std::vector<Child> found;
    for (bool more = keys_.at(key); more; more = keys_.next()) {
        const auto& row = keys_.row();
        Child& child = found.emplace_back();
        child.id = row.number(1);
        child.name = row.text(2);
        row.blob(7, folded_);
        requireKeyName(child.name, folded_);
        child.details.className = row.bytes(3);
        child.details.written = static_cast<std::uint64_t>(row.number(4));
        if (const std::int64_t number = row.number(5); number != 0) child.details.descriptor = descriptor(number);
        child.details.readOnly = row.number(6) != 0;
        child.details.flags = static_cast<std::uint16_t>(row.number(8));
        child.details.userFlags = static_cast<std::uint16_t>(row.number(9));
    }
    return found;
}

const Bytes& StoreWalk::descriptor(std::int64_t number) {
    const auto [at, fresh] = descriptors_.try_emplace(number);
    if (fresh) at->second = tables_.descriptor(number);
    return at->second;
}

}  // namespace brenvik
