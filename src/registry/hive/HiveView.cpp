#include "registry/hive/HiveView.h"

#include <algorithm>

#include "registry/Upcase.h"
#include "registry/Wtf8.h"

namespace brenvik {

using namespace hivefmt;

namespace {
constexpr std::size_t segmentsSlack = 2;
}

std::string textOf(const StoredName& name) {
    if (!name.latin1) return fromUtf16Le(name.bytes.data(), name.bytes.size());
    if (std::none_of(name.bytes.begin(), name.bytes.end(), [](std::uint8_t byte) { return byte >= 0x80; })) return {name.bytes.begin(), name.bytes.end()};
    std::string text;
    text.reserve(name.bytes.size());
    for (const std::uint8_t byte : name.bytes) {
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

HiveView::HiveView(ByteSpan file, HiveFindings& findings)
    : findings_(findings), cells_(file, findings), sharedBudget_(std::uint64_t{2} * file.size()) {}

void HiveView::claimCells() { claimed_ = CellBits(cells_.binsSize()); }

ByteSpan HiveView::take(std::uint32_t offset, std::size_t least, const char* message) {
    const ByteSpan cell = cells_.cell(offset);
    if (cell.size() < least || cell.empty()) {
        findings_.fault(place(offset), message);
        return {};
    }
    if (!claimed_.empty()) {
        if (claimed_.has(offset)) {
            findings_.fault(place(offset), "Auf diese Zelle verweisen zwei Stellen.");
            return {};
        }
        claimed_.set(offset);
    }
    return cell;
}

std::optional<HiveKeyRecord> HiveView::root() {
    const std::uint32_t offset = get32(cells_.base() + header::RootCell);
    auto record = key(offset);
    if (record && (record->flags & nk::HiveEntry) == 0) findings_.fault(place(offset) + 4 + nk::Flags, "Der oberste Schlüssel ist nicht als solcher gekennzeichnet.");
    return record;
}

std::optional<HiveKeyRecord> HiveView::key(std::uint32_t offset) {
    const ByteSpan cell = take(offset, nk::Name, "Hier müsste ein Schlüssel stehen.");
    if (cell.empty()) return std::nullopt;
    if (!hasSignature(cell, "nk")) {
        findings_.fault(place(offset), "Hier müsste ein Schlüssel stehen.");
        return std::nullopt;
    }
    const std::uint8_t* const c = cell.data();
    HiveKeyRecord r;
    r.offset = offset;
    r.flags = get16(c + nk::Flags);
    r.lastWrite = get64(c + nk::LastWrite);
    r.accessBits = get32(c + nk::Access);
    r.parent = get32(c + nk::Parent);
    r.subKeyCount = get32(c + nk::SubKeys);
    r.subKeyList = get32(c + nk::SubKeyList);
    r.valueCount = get32(c + nk::Values);
    r.valueList = get32(c + nk::ValueList);
    if ((r.flags & nk::Predefined) != 0) {
        r.predefinedHandle = r.valueCount;
        r.valueCount = 0;
    }
    r.security = get32(c + nk::Security);
    r.userFlags = get16(c + nk::UserFlags);
    const std::size_t nameSize = get16(c + nk::NameSize);
    r.name.latin1 = (r.flags & nk::Latin1Name) != 0;
    if (nameSize > cell.size() - nk::Name || (!r.name.latin1 && nameSize % 2 != 0)) {
        findings_.fault(place(offset) + 4 + nk::NameSize, "Der Name des Schlüssels ragt aus seiner Zelle.");
        return std::nullopt;
    }
    r.name.bytes = cell.subspan(nk::Name, nameSize);
    readClass(r, get32(c + nk::Class), get16(c + nk::ClassSize));
    return r;
}

void HiveView::readClass(HiveKeyRecord& record, std::uint32_t offset, std::size_t size) {
    if (size == 0) return;
    const ByteSpan cell = take(offset, size, "Hier müsste der Klassenname eines Schlüssels stehen.");
    if (!cell.empty()) record.className = cell.first(size);
}

void HiveView::leaf(ByteSpan cell, std::uint32_t offset, std::vector<std::uint32_t>& out) {
    const std::size_t width = hasSignature(cell, "li") ? 4 : hasSignature(cell, "lf") || hasSignature(cell, "lh") ? 8 : 0;
    if (width == 0) {
        findings_.fault(place(offset), "Hier müsste eine Liste von Schlüsseln stehen.");
        return;
    }
    std::size_t entries = get16(cell.data() + list::Count);
    const std::size_t room = (cell.size() - list::Entries) / width;
    if (entries > room) {
        findings_.fault(place(offset) + 4 + list::Count, "Die Liste der Schlüssel ist länger als ihre Zelle.");
        entries = room;
    }
    if (out.empty()) out.reserve(entries);
    for (std::size_t i = 0; i < entries; ++i) out.push_back(get32(cell.data() + list::Entries + width * i));
}

std::vector<std::uint32_t> HiveView::subKeys(const HiveKeyRecord& key) {
    std::vector<std::uint32_t> offsets;
    if (key.subKeyCount == 0) return offsets;
    const ByteSpan cell = take(key.subKeyList, list::Entries, "Hier müsste eine Liste von Schlüsseln stehen.");
    if (cell.empty()) return offsets;
    if (hasSignature(cell, "ri")) {
        std::size_t lists = get16(cell.data() + list::Count);
        const std::size_t room = (cell.size() - list::Entries) / 4;
        if (lists > room) {
            findings_.fault(place(key.subKeyList) + 4 + list::Count, "Die Liste der Listen ist länger als ihre Zelle.");
            lists = room;
        }
        for (std::size_t i = 0; i < lists; ++i) {
            const std::uint32_t at = get32(cell.data() + list::Entries + 4 * i);
            const ByteSpan part = take(at, list::Entries, "Hier müsste eine Liste von Schlüsseln stehen.");
            if (!part.empty()) leaf(part, at, offsets);
        }
    } else {
        leaf(cell, key.subKeyList, offsets);
    }
    if (offsets.size() != key.subKeyCount) findings_.fault(place(key.offset) + 4 + nk::SubKeys, "Die Zahl der Unterschlüssel passt nicht zu ihrer Liste.");
    return offsets;
}

std::vector<HiveValueRecord> HiveView::values(const HiveKeyRecord& key) {
    std::vector<HiveValueRecord> records;
    if (key.valueCount == 0) return records;
    const ByteSpan cell = take(key.valueList, 4, "Hier müsste eine Liste von Werten stehen.");
    if (cell.empty()) return records;
    std::size_t entries = key.valueCount;
    if (entries > cell.size() / 4) {
        findings_.fault(place(key.offset) + 4 + nk::Values, "Die Zahl der Werte ist größer als ihre Liste.");
        entries = cell.size() / 4;
    }
    records.reserve(entries);
    for (std::size_t i = 0; i < entries; ++i) {
        if (auto record = value(get32(cell.data() + 4 * i))) records.push_back(*record);
    }
    return records;
}

std::optional<HiveValueRecord> HiveView::value(std::uint32_t offset) {
    const ByteSpan cell = take(offset, vk::Name, "Hier müsste ein Wert stehen.");
    if (cell.empty()) return std::nullopt;
    if (!hasSignature(cell, "vk")) {
        findings_.fault(place(offset), "Hier müsste ein Wert stehen.");
        return std::nullopt;
    }
    const std::uint8_t* const c = cell.data();
    HiveValueRecord r;
    r.offset = offset;
    r.type = get32(c + vk::Type);
    r.size = get32(c + vk::DataSize) & ~inlineData;
    r.isInline = (get32(c + vk::DataSize) & inlineData) != 0;
    r.data = get32(c + vk::Data);
    r.name.latin1 = (get16(c + vk::Flags) & vk::Latin1Name) != 0;
    const std::size_t nameSize = get16(c + vk::NameSize);
    if (nameSize > cell.size() - vk::Name || (!r.name.latin1 && nameSize % 2 != 0)) {
        findings_.fault(place(offset) + 4 + vk::NameSize, "Der Name des Wertes ragt aus seiner Zelle.");
        return std::nullopt;
    }
    r.name.bytes = cell.subspan(vk::Name, nameSize);
    if (r.isInline && r.size > 4) {
        findings_.fault(place(offset) + 4 + vk::DataSize, "Die Länge der Daten des Wertes ist unmöglich.");
        return std::nullopt;
    }
    return r;
}

bool HiveView::data(const HiveValueRecord& value, Bytes& out) {
    out.clear();
    if (value.size == 0) return true;
    if (value.isInline) {
        out.resize(4);
        put32(out.data(), value.data);
        out.resize(value.size);
        return true;
    }
    ByteSpan cell = take(value.data, 4, "Hier müssten die Daten eines Wertes stehen.");
    if (cell.empty()) {   // only when salvaging: shared data are better than none
        cell = cells_.cell(value.data);
        if (cell.size() < value.size || value.size > sharedBudget_) return false;
        sharedBudget_ -= value.size;
    }
    if (cell.size() >= value.size) {
        out.assign(cell.begin(), cell.begin() + value.size);
        return true;
    }
    if (cells_.minorVersion() >= firstMinorWithBigData && value.size > bigSegment && hasSignature(cell, "db")) return bigData(cell, value, out);
    findings_.fault(place(value.offset) + 4 + vk::DataSize, "Die Daten des Wertes sind länger als ihre Zelle.");
    out.assign(cell.begin(), cell.end());
    return true;
}

bool HiveView::bigData(ByteSpan cell, const HiveValueRecord& value, Bytes& out) {
    if (cell.size() < db::Size) {
        findings_.fault(place(value.data), "Die Liste der Teile großer Daten ist zu kurz.");
        return false;
    }
    const std::size_t segments = get16(cell.data() + db::Count);
    const std::uint32_t listOffset = get32(cell.data() + db::List);
    const ByteSpan offsets = take(listOffset, 4 * std::max<std::size_t>(segments, segmentsSlack), "Hier müsste die Liste der Teile großer Daten stehen.");
    if (offsets.empty()) return false;
    if (segments != (std::uint64_t{value.size} + bigSegment - 1) / bigSegment) {
        findings_.fault(place(value.data) + 4 + db::Count, "Die Zahl der Teile passt nicht zur Länge der Daten.");
    }
    for (std::size_t i = 0; i < segments && out.size() < value.size; ++i) {
        const std::size_t wanted = std::min<std::size_t>(bigSegment, value.size - out.size());
        const ByteSpan part = take(get32(offsets.data() + 4 * i), wanted, "Hier müsste ein Teil großer Daten stehen.");
        if (part.empty()) return false;
        out.insert(out.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(wanted));
    }
    if (out.size() == value.size) return true;
    findings_.fault(place(value.data), "Von großen Daten fehlen Teile.");
    return false;
}

ByteSpan HiveView::descriptor(const HiveKeyRecord& key) {
    if (key.security == noCell) return {};
    const ByteSpan cell = cells_.cell(key.security);
    if (cell.size() < sk::Descriptor || !hasSignature(cell, "sk")) {
        findings_.fault(place(key.offset) + 4 + nk::Security, "Die Berechtigungen des Schlüssels sind nicht zu finden.");
        return {};
    }
    const std::uint32_t size = get32(cell.data() + sk::Size);
    if (size > cell.size() - sk::Descriptor) {
        findings_.fault(place(key.security) + 4 + sk::Size, "Die Berechtigungen sind länger als ihre Zelle.");
        return {};
    }
    return cell.subspan(sk::Descriptor, size);
}

std::optional<HiveKeyRecord> HiveView::find(std::string_view path) {
    auto at = root();
    while (at && !path.empty()) {
        const std::size_t end = std::min(path.find('\\'), path.size());
        const std::u16string wanted = foldName(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
        const auto matches = [&](const StoredName& name) {
            if (name.units() != wanted.size()) return false;
            for (std::size_t i = 0; i < wanted.size(); ++i) {
                if (upcase(name.unit(i)) != wanted[i]) return false;
            }
            return true;
        };
        std::optional<HiveKeyRecord> next;
        for (const std::uint32_t offset : subKeys(*at)) {
            auto candidate = key(offset);
            if (candidate && matches(candidate->name)) {
                next = candidate;
                break;
            }
        }
        at = next;
    }
    return at;
}

}  // namespace brenvik
