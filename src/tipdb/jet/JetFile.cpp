#include "tipdb/jet/JetFile.h"

#include <array>
#include <cstring>
#include <utility>

#include "tipdb/jet/JetText.h"

namespace brenvik::jet {

namespace {

constexpr std::size_t FreeSpaceAt = 2, OwnerAt = 4;
constexpr char LongValueOwner[] = {'L', 'V', 'A', 'L'};
constexpr unsigned OffsetMask = 0x1FFF, MovedFlag = 0x4000, HiddenFlag = 0x8000;
constexpr std::uint32_t InlineValue = 0x80000000, SinglePageValue = 0x40000000, LengthMask = 0x00FFFFFF;
constexpr std::size_t LongValueHeader = 12;

// Header fields, all inside the part of page 0 that is enciphered with a fixed key.
constexpr std::size_t VersionAt = 0x14, CipheredAt = 0x18, CodePageAt = 0x3C, DatabaseKeyAt = 0x3E, PasswordAt = 0x42,
                      CreatedAt = 0x72;
constexpr std::array<std::uint8_t, 4> HeaderKey = {0xC7, 0xDA, 0x39, 0x6B};

void rc4(const std::array<std::uint8_t, 4>& key, std::uint8_t* bytes, std::size_t count) {
    std::array<std::uint8_t, 256> state;
    for (unsigned i = 0; i < 256; ++i) state[i] = static_cast<std::uint8_t>(i);
    for (unsigned i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + key[i % key.size()]) & 255;
        std::swap(state[i], state[j]);
    }
    unsigned i = 0, j = 0;
    for (std::size_t n = 0; n < count; ++n) {
        i = (i + 1) & 255;
        j = (j + state[i]) & 255;
        std::swap(state[i], state[j]);
        bytes[n] ^= state[(state[i] + state[j]) & 255];
    }
}

std::string upToZero(std::string text) {
    const auto end = text.find('\0');
    if (end != std::string::npos) text.resize(end);
    return text;
}

// In Jet 4 the password is covered with the whole days of the creation date.
std::string passwordJet4(const Slice& header) {
    double created = 0;
    std::memcpy(&created, header.at(CreatedAt, sizeof created), sizeof created);
    const std::uint32_t mask = created > 0 && created < 4294967296.0 ? static_cast<std::uint32_t>(created) : 0;
    std::array<std::uint8_t, 40> units;
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<std::uint8_t>(header.u8(PasswordAt + i) ^ (mask >> 8 * (i % 4) & 0xFF));
    return upToZero(decodeUcs2(units.data(), units.size(), false));
}

}  // namespace

bool JetFile::looksLikeJet(std::string_view bytes) { return bytes.substr(0, 20) == std::string_view("\0\1\0\0Standard Jet DB", 20); }

JetFile::JetFile(std::string bytes) : bytes_(std::move(bytes)) {
    if (!looksLikeJet(bytes_) || bytes_.size() < 2 * pageSize_)
        throw Damaged("die Datei ist keine Jet-Datenbank");
    if (bytes_[VersionAt] > 1) throw Damaged("nur die Formate Jet 3 und Jet 4 werden gelesen");
    jet4_ = bytes_[VersionAt] == 1;
    pageSize_ = jet4_ ? 4096 : 2048;
    budget_ = 16 * bytes_.size() + (1U << 20);
    if (bytes_.size() % pageSize_ != 0) throw Damaged("die letzte Seite ist unvollständig");
    readHeader();
}

void JetFile::readHeader() {
    rc4(HeaderKey, at(CipheredAt), jet4_ ? 128 : 126);
    const Slice header = page(0);
    const unsigned codePage = header.u16(CodePageAt);
    if (!jet4_ && codePage != 1252 && codePage != 0)
        throw Damaged("die Codepage " + std::to_string(codePage) + " wird nicht gelesen");
    password_ = jet4_ ? passwordJet4(header) : upToZero(decode1252(header.at(PasswordAt, 20), 20));
    decodePages(header.u32(DatabaseKeyAt));
}

void JetFile::decodePages(std::uint32_t databaseKey) {
    if (databaseKey == 0) return;
    for (std::size_t number = 1; number < pages(); ++number) {
        const std::uint32_t key = databaseKey ^ static_cast<std::uint32_t>(number);
        rc4({static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(key >> 8), static_cast<std::uint8_t>(key >> 16),
             static_cast<std::uint8_t>(key >> 24)},
            at(number * pageSize_), pageSize_);
    }
}

void JetFile::spend(std::size_t amount) const {
    if (amount > budget_) throw Damaged("die Angaben wiederholen sich ohne Ende");
    budget_ -= amount;
}

Slice JetFile::page(std::size_t number) const {
    if (number >= pages()) throw Damaged("eine Seite liegt hinter dem Ende der Datei");
    return {reinterpret_cast<const std::uint8_t*>(bytes_.data()) + number * pageSize_, pageSize_};
}

Slice JetFile::page(std::size_t number, PageType expected) const {
    const Slice p = page(number);
    if (p.u8(0) != expected || p.u8(1) != 1) throw Damaged("eine Seite ist von anderer Art als erwartet");
    if (expected == DataPage && p.u16(FreeSpaceAt) > pageSize_) throw Damaged("der freie Platz einer Seite ist größer als sie selbst");
    return p;
}

JetFile::Row JetFile::row(std::size_t pageNumber, std::size_t rowNumber) const {
    const Slice p = page(pageNumber, DataPage);
    const std::size_t offsets = rowCountOffset() + 2;
    if (rowNumber >= p.u16(rowCountOffset())) throw Damaged("ein Verweis zeigt auf keine Zeile");
    const unsigned entry = p.u16(offsets + 2 * rowNumber);
    const std::size_t start = entry & OffsetMask;
    const std::size_t end = rowNumber == 0 ? pageSize_ : p.u16(offsets + 2 * (rowNumber - 1)) & OffsetMask;
    if (start > end || end > pageSize_ || start < offsets + 2 * p.u16(rowCountOffset()))
        throw Damaged("eine Zeile liegt außerhalb ihrer Seite");
    spend(end - start);
    return {p.part(start, end - start), (entry & MovedFlag) != 0, (entry & HiddenFlag) != 0};
}

Slice JetFile::reference(std::uint32_t pointer) const { return row(pointer >> 8, pointer & 0xFF).bytes; }

std::vector<std::uint32_t> JetFile::usageMap(std::uint32_t pointer) const {
    const Slice map = reference(pointer);
    std::vector<std::uint32_t> found;
    const auto collect = [&](Slice bits, std::uint64_t firstPage) {
        for (std::size_t i = 0; i < bits.size * 8; ++i) {
            if ((bits.data[i / 8] >> i % 8 & 1) == 0) continue;
            if (firstPage + i >= pages()) throw Damaged("die Seitenbelegung nennt eine Seite hinter dem Ende der Datei");
            found.push_back(static_cast<std::uint32_t>(firstPage + i));
        }
    };
    if (map.u8(0) == 0) {
        collect(map.from(5), map.u32(1));
    } else if (map.u8(0) == 1) {
        for (std::size_t i = 0; 1 + 4 * i + 4 <= map.size; ++i) {
            const std::uint32_t number = map.u32(1 + 4 * i);
            if (number == 0) continue;
            collect(page(number, UsageMapPage).from(4), static_cast<std::uint64_t>(i) * (pageSize_ - 4) * 8);
        }
    } else {
        throw Damaged("die Art der Seitenbelegung ist unbekannt");
    }
    return found;
}

Slice JetFile::longValuePiece(std::uint32_t pointer) const {
    const Slice piece = reference(pointer);
    if (std::memcmp(page(pointer >> 8).at(OwnerAt, sizeof LongValueOwner), LongValueOwner, sizeof LongValueOwner) != 0)
        throw Damaged("ein langer Wert liegt nicht auf seiner Seite");
    return piece;
}

std::vector<std::uint8_t> JetFile::longValue(Slice column) const {
    const std::uint32_t head = column.u32(0), length = head & LengthMask;
    std::uint32_t pointer = column.u32(4);
    const auto whole = [&](Slice source) {
        const auto* first = source.at(0, length);
        return std::vector<std::uint8_t>(first, first + length);
    };
    if (head & InlineValue) return whole(column.from(LongValueHeader));
    if (head & SinglePageValue) return whole(longValuePiece(pointer));
    if (head != length) throw Damaged("die Art eines langen Werts ist unbekannt");
    std::vector<std::uint8_t> value;
    while (pointer != 0) {
        const Slice piece = longValuePiece(pointer);
        pointer = piece.u32(0);
        if (piece.size == 4) throw Damaged("ein langer Wert hat ein leeres Glied");
        value.insert(value.end(), piece.data + 4, piece.data + piece.size);
        if (value.size() > length) throw Damaged("ein langer Wert ist länger als angegeben");
    }
    if (value.size() != length) throw Damaged("ein langer Wert ist kürzer als angegeben");
    return value;
}

std::string JetFile::text(Slice bytes) const {
    return jet4_ ? decodeUcs2(bytes.data, bytes.size, true) : decode1252(bytes.data, bytes.size);
}

std::string JetFile::name(Slice bytes) const {
    return jet4_ ? decodeUcs2(bytes.data, bytes.size, false) : decode1252(bytes.data, bytes.size);
}

}  // namespace brenvik::jet
