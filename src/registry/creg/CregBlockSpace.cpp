#include "registry/creg/CregBlockSpace.h"

#include <algorithm>
#include <vector>

namespace brenvik {

using namespace cregfmt;

namespace {

// A record is never smaller than what can be freed again.
std::uint32_t roomFor(std::uint32_t used) { return std::max(used, record::smallestFree); }

// In a file there may be smaller ones, which grow only where a new place is made for them.
std::uint32_t roomKept(std::uint32_t size, std::uint32_t used) { return std::min(size, roomFor(used)); }

// With neither name nor values: there are readers that look for them in holes too.
void writeHole(std::uint8_t* at, std::uint32_t size, std::uint32_t next) {
    std::memset(at, 0, record::headerSize);
    put32(at + record::Size, size);
    put32(at + record::Id, none);   // and no block
    put32(at + record::Used, next);
}

}  // namespace

CregBlockSpace CregBlockSpace::fresh(std::uint16_t number, std::uint16_t flags, std::uint32_t content) {
    const std::uint32_t needed = block::headerSize + roomFor(record::headerSize + content);
    Bytes bytes(std::min((needed + block::growth - 1) / block::growth * block::growth, block::largest));
    std::memcpy(bytes.data(), "RGDB", 4);
    put32(bytes.data() + block::Size, static_cast<std::uint32_t>(bytes.size()));
    put16(bytes.data() + block::Flags, flags);
    put16(bytes.data() + block::Number, number);
    put32(bytes.data() + block::FirstFree, block::headerSize);
    writeHole(bytes.data() + block::headerSize, static_cast<std::uint32_t>(bytes.size()) - block::headerSize, none);
    CregBlockSpace made{ByteSpan(bytes)};
    made.recount();
    return made;
}

std::uint32_t CregBlockSpace::find(std::uint16_t id) const {
    for (std::uint32_t at = block::headerSize; at < bytes_.size(); at += get(at))
        if (get16(bytes_.data() + at + record::Id) == id) return at;
    return 0;
}

std::optional<std::uint16_t> CregBlockSpace::freeId() const {
    const std::uint16_t id = get16(bytes_.data() + block::LowestFreeId);
    return id < block::mostRecords ? std::optional(id) : std::nullopt;
}

void CregBlockSpace::write(std::uint32_t at, std::uint32_t size, std::uint16_t id, const CregContent& content) {
    std::uint8_t* const p = bytes_.data() + at;
    put32(p, size);
    put16(p + record::Id, id);
    put16(p + record::Block, get16(bytes_.data() + block::Number));
    put32(p + record::Used, content.used());
    put16(p + record::NameSize, content.nameSize);
    put16(p + record::Values, content.valueCount);
    put32(p + record::headerSize - 4, 0);
    std::copy(content.bytes.begin(), content.bytes.end(), p + record::headerSize);
}

bool CregBlockSpace::overwrite(std::uint16_t id, const CregContent& content) {
    const std::uint32_t at = find(id);
    if (at == 0 || content.used() > get(at)) return false;
    put32(bytes_.data() + at + record::Used, content.used());
    put16(bytes_.data() + at + record::NameSize, content.nameSize);
    put16(bytes_.data() + at + record::Values, content.valueCount);
    std::copy(content.bytes.begin(), content.bytes.end(), bytes_.begin() + at + record::headerSize);
    return true;
}

std::optional<CregBlockSpace::Hole> CregBlockSpace::holeFor(std::uint32_t size) const {
    for (std::uint32_t link = block::FirstFree; get(link) != none; link = get(link) + record::Used)
        if (get(get(link)) >= size) return Hole{get(link), link};
    return std::nullopt;
}

bool CregBlockSpace::add(std::uint16_t id, const CregContent& content) {
    const std::uint32_t size = roomFor(content.used()), before = find(id);
    const auto hole = holeFor(size);
    if (!hole || (before != 0 && get(before) < record::smallestFree)) return false;
    const std::uint32_t whole = get(hole->at), next = get(hole->at + record::Used), rest = whole - size;
    if (rest >= record::smallestFree) {
        writeHole(bytes_.data() + hole->at + size, rest, next);
        put32(bytes_.data() + hole->link, hole->at + size);
    } else {
        put32(bytes_.data() + hole->link, next);
    }
    write(hole->at, rest >= record::smallestFree ? size : whole, id, content);
    if (before != 0) release(before);
    recount();
    return true;
}

bool CregBlockSpace::release(std::uint32_t at) {
    if (get(at) < record::smallestFree) return false;
    writeHole(bytes_.data() + at, get(at), get(block::FirstFree));
    put32(bytes_.data() + block::FirstFree, at);
    return true;
}

void CregBlockSpace::remove(std::uint16_t id) {
    if (release(find(id))) return recount();
    layOut(id, nullptr, std::max(static_cast<std::uint32_t>(bytes_.size()), block::headerSize + record::smallestFree));
}

std::uint32_t CregBlockSpace::compactSize(std::optional<std::uint16_t> without) const {
    std::uint32_t size = block::headerSize;
    for (std::uint32_t at = block::headerSize; at < bytes_.size(); at += get(at)) {
        const std::uint16_t id = get16(bytes_.data() + at + record::Id);
        if (id != noRecord && id != without) size += roomKept(get(at), get(at + record::Used));
    }
    return size;
}

bool CregBlockSpace::rebuild(std::uint16_t id, const CregContent& content) {
    const std::uint32_t needed = compactSize(id) + roomFor(content.used());
    auto size = static_cast<std::uint32_t>(bytes_.size());
    while (size < needed && size < block::largest) size = std::min(size + block::growth, block::largest);
    if (size < needed) return false;
    layOut(id, &content, size);
    return true;
}

// The changed record stays where it stood among the others, or comes last; without content it is left out.
void CregBlockSpace::layOut(std::optional<std::uint16_t> changed, const CregContent* content, std::uint32_t size) {
    const CregBlockSpace before = *this;
    bytes_.assign(size, 0);
    std::copy_n(before.bytes_.begin(), block::headerSize, bytes_.begin());
    put32(bytes_.data() + block::Size, size);
    put32(bytes_.data() + block::FirstFree, none);
    std::uint32_t to = block::headerSize, last = 0;
    const auto put = [&](std::uint16_t id) {
        last = to;
        write(to, roomFor(content->used()), id, *content);
        to += roomFor(content->used());
    };
    bool placed = !changed || content == nullptr;
    for (std::uint32_t at = block::headerSize; at < before.bytes_.size(); at += before.get(at)) {
        const std::uint16_t id = get16(before.bytes_.data() + at + record::Id);
        if (id == changed && content != nullptr) {
            put(id);
            placed = true;
        } else if (id != noRecord && id != changed) {
            const std::uint32_t used = before.get(at + record::Used), room = roomKept(before.get(at), used);
            last = to;
            std::copy_n(before.bytes_.begin() + at, used, bytes_.begin() + to);
            put32(bytes_.data() + to, room);
            to += room;
        }
    }
    if (!placed) put(*changed);
    const std::uint32_t rest = size - to;
    if (rest >= record::smallestFree) {
        writeHole(bytes_.data() + to, rest, none);
        put32(bytes_.data() + block::FirstFree, to);
    } else if (last != 0) {
        put32(bytes_.data() + last, get(last) + rest);
    }
    recount();
}

void CregBlockSpace::recount() {
    std::vector<bool> taken(block::mostRecords + 1);
    std::uint32_t free = 0;
    for (std::uint32_t at = block::headerSize; at < bytes_.size(); at += get(at)) {
        const std::uint16_t id = get16(bytes_.data() + at + record::Id);
        if (id == noRecord) free += get(at);
        else taken[id] = true;
    }
    put32(bytes_.data() + block::FreeBytes, free);
    const auto highest = std::find(taken.rbegin(), taken.rend(), true);
    if (highest != taken.rend()) put16(bytes_.data() + block::HighestId, static_cast<std::uint16_t>(taken.rend() - highest - 1));
    put16(bytes_.data() + block::LowestFreeId, static_cast<std::uint16_t>(std::find(taken.begin(), taken.end(), false) - taken.begin()));
}

void CregBlockSpace::seal() {
    if ((flags() & checksumValid) == 0) return;
    put32(bytes_.data() + block::Checksum, 0);
    put32(bytes_.data() + block::Checksum, 0 - sumOf(bytes_));
}

}  // namespace brenvik
