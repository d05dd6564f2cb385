#include "registry/hive/HiveWriter.h"

#include <algorithm>
#include <map>

#include "registry/Upcase.h"
#include "registry/Wtf8.h"
#include "registry/hive/HiveCellSpace.h"
#include "registry/hive/HiveFinding.h"
#include "registry/hive/HiveFormat.h"
#include "registry/hive/HiveNames.h"

namespace brenvik {

using namespace hivefmt;

namespace {

// A name in the form in which it will lie in its cell.
struct PackedName {
    std::string bytes;
    bool latin1 = true;
    StoredName stored() const { return {{reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, latin1}; }
    std::uint32_t utf16Size() const { return static_cast<std::uint32_t>(2 * stored().units()); }
};

PackedName pack(const std::string& text) {
    PackedName packed;
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        packed.bytes = text;
        return packed;
    }
    const std::u16string units = toUtf16(text);
    packed.latin1 = std::all_of(units.begin(), units.end(), [](char16_t unit) { return unit < 0x100; });
    if (packed.latin1) {
        for (const char16_t unit : units) packed.bytes += static_cast<char>(unit);
    } else {
        appendUtf16Le(packed.bytes, units);
    }
    return packed;
}

struct Child {
    PackedName name;
    const HiveKey* key = nullptr;
    std::uint32_t offset = 0;
};

class Writer {
public:
    Writer(const Hive& hive, const HiveWriteOptions& options)
        : hive_(hive), options_(options), minor_(options.minorVersion != 0 ? options.minorVersion : hive.minorVersion), space_(hive.binsSize) {
        if (minor_ < 3 || minor_ > highestMinor) throw HiveError("Diese Version des Formats lässt sich nicht schreiben.");
    }

    Bytes write() {
        const std::uint32_t rootSecurity = distinct(hive_.root.security, enlist(default_));
        const PackedName name = pack(hive_.root.name);
        if (name.stored().units() > longestKeyName) throw HiveError("Der Name des obersten Schlüssels ist zu lang.");
        const std::uint32_t root = key(hive_.root, name, noCell, rootSecurity, 1);
        finishSecurity();
        return finish(root);
    }

private:
    struct Security {
        const Bytes* descriptor = nullptr;
        std::uint32_t offset = 0, references = 0;
    };

    // Descriptors ----------------------------------------------------------------------------------------------------

    std::uint32_t enlist(const Bytes& descriptor) {
        const std::string_view content(reinterpret_cast<const char*>(descriptor.data()), descriptor.size());
        const auto [at, fresh] = byContent_.try_emplace(content, static_cast<std::uint32_t>(securities_.size()));
        if (fresh) securities_.push_back({&descriptor, 0, 0});
        return at->second;
    }

    std::uint32_t distinct(std::uint32_t index, std::uint32_t inherited) {
        if (index == HiveKey::NoSecurity || index >= hive_.descriptors.size()) return inherited;
        if (known_.empty()) known_.assign(hive_.descriptors.size(), noCell);
        if (known_[index] == noCell) known_[index] = enlist(hive_.descriptors[index]);
        return known_[index];
    }

    std::uint32_t securityCell(std::uint32_t index) {
        Security& security = securities_[index];
        if (security.references++ == 0) {
            const Bytes& bytes = *security.descriptor;
            security.offset = space_.allocate(sk::Descriptor + bytes.size());
            std::uint8_t* const c = space_.at(security.offset);
            std::memcpy(c, "sk", 2);
            put32(c + sk::Size, static_cast<std::uint32_t>(bytes.size()));
            std::copy(bytes.begin(), bytes.end(), c + sk::Descriptor);
            ring_.push_back(index);
        }
        return security.offset;
    }

    void finishSecurity() {
        for (std::size_t i = 0; i < ring_.size(); ++i) {
            const Security& security = securities_[ring_[i]];
            std::uint8_t* const c = space_.at(security.offset);
            put32(c + sk::Next, securities_[ring_[(i + 1) % ring_.size()]].offset);
            put32(c + sk::Previous, securities_[ring_[(i + ring_.size() - 1) % ring_.size()]].offset);
            put32(c + sk::References, security.references);
        }
    }

    // Keys -----------------------------------------------------------------------------------------------------------

    std::uint32_t key(const HiveKey& k, const PackedName& name, std::uint32_t parent, std::uint32_t security, std::size_t depth) {
        if (depth > deepest) throw HiveError("Die Schlüssel sind zu tief geschachtelt: " + k.name);
        const std::uint32_t at = space_.allocate(nk::Name + name.bytes.size());
        const std::uint32_t securityAt = securityCell(security);
        std::string className;
        appendUtf16Le(className, toUtf16(k.className));
        if (className.size() > 0xFFFE) throw HiveError("Der Klassenname ist zu lang: " + k.name);
        std::uint8_t* c = space_.at(at);
        std::memcpy(c, "nk", 2);
        const bool isRoot = parent == noCell;
        put16(c + nk::Flags, keptFlags(k) | (name.latin1 ? nk::Latin1Name : 0u) | (isRoot ? nk::HiveEntry | nk::NoDelete : 0u));
        put64(c + nk::LastWrite, k.lastWrite);
        put32(c + nk::Access, k.accessBits);
        put32(c + nk::Parent, isRoot ? 0 : parent);
        put32(c + nk::SubKeyList, noCell);
        put32(c + nk::VolatileList, noCell);
        put32(c + nk::ValueList, noCell);
        put32(c + nk::Security, securityAt);
        put32(c + nk::Class, noCell);
        put16(c + nk::UserFlags, k.userFlags);
        put16(c + nk::NameSize, static_cast<std::uint32_t>(name.bytes.size()));
        std::copy(name.bytes.begin(), name.bytes.end(), c + nk::Name);
        if (!className.empty()) {
            put16(c + nk::ClassSize, static_cast<std::uint32_t>(className.size()));
            const std::uint32_t classAt = raw(className.data(), className.size());
            put32(space_.at(at) + nk::Class, classAt);
        }
        values(k, at);
        subKeys(k, at, security, depth);
        return at;
    }

    // A predefined key's count of values is a handle; one that was given values is an ordinary key.
    static bool isPredefined(const HiveKey& k) { return (k.flags & nk::Predefined) != 0 && k.values.empty(); }

    static std::uint32_t keptFlags(const HiveKey& k) {
        const std::uint32_t flags = k.flags & ~std::uint32_t{nk::Latin1Name | nk::HiveEntry};
        return isPredefined(k) ? flags : flags & ~std::uint32_t{nk::Predefined};
    }

    void subKeys(const HiveKey& k, std::uint32_t at, std::uint32_t security, std::size_t depth) {
        if (k.subKeys.empty()) return;
        std::vector<Child> children = ordered(k);
        std::uint32_t longestName = 0;
        std::size_t longestClass = 0;
        for (Child& child : children) {
            child.offset = key(*child.key, child.name, at, distinct(child.key->security, security), depth + 1);
            longestName = std::max(longestName, child.name.utf16Size());
            if (!child.key->className.empty()) longestClass = std::max(longestClass, 2 * toUtf16(child.key->className).size());
        }
        const std::uint32_t listAt = list(children);
        std::uint8_t* const c = space_.at(at);
        put32(c + nk::SubKeys, static_cast<std::uint32_t>(children.size()));
        put32(c + nk::SubKeyList, listAt);
        put16(c + nk::MaxName, longestName);
        put32(c + nk::MaxClass, static_cast<std::uint32_t>(longestClass));
    }

    static std::vector<Child> ordered(const HiveKey& k) {
        std::vector<Child> children;
        children.reserve(k.subKeys.size());
        for (const HiveKey& subKey : k.subKeys) {
            Child child{pack(subKey.name), &subKey};
            const std::size_t units = child.name.stored().units();
            if (units == 0 || units > longestKeyName) throw HiveError("Der Name eines Schlüssels hat 1 bis 255 Zeichen: " + subKey.name);
            if (subKey.name.find('\\') != std::string::npos) throw HiveError("Der Name eines Schlüssels enthält keinen umgekehrten Schrägstrich: " + subKey.name);
            children.push_back(std::move(child));
        }
        const auto order = [](const Child& l, const Child& r) { return compareStored(l.name.stored(), r.name.stored()) < 0; };
        if (!std::is_sorted(children.begin(), children.end(), order)) std::sort(children.begin(), children.end(), order);
        for (std::size_t i = 1; i < children.size(); ++i) {
            if (!order(children[i - 1], children[i])) throw HiveError("Zwei Schlüssel haben denselben Namen: " + children[i].key->name);
        }
        return children;
    }

    // Leaves with hashes in the newer version; in the older one with hints as long as one leaf will do.
    std::uint32_t list(const std::vector<Child>& children) {
        constexpr std::size_t mostInLeaf = 500;   // fits a bin of the smallest size
        if (children.size() <= mostInLeaf) return leaf(children, 0, children.size(), minor_ >= firstMinorWithHashes ? "lh" : "lf");
        const std::size_t leaves = (children.size() + mostInLeaf - 1) / mostInLeaf;
        if (leaves > 0xFFFF) throw HiveError("Ein Schlüssel hat zu viele Unterschlüssel.");
        std::vector<std::uint32_t> offsets;
        for (std::size_t i = 0; i < leaves; ++i) {
            const std::size_t from = i * children.size() / leaves, to = (i + 1) * children.size() / leaves;
            offsets.push_back(leaf(children, from, to, minor_ >= firstMinorWithHashes ? "lh" : "li"));
        }
        const std::uint32_t at = space_.allocate(list::Entries + 4 * offsets.size());
        std::uint8_t* const c = space_.at(at);
        std::memcpy(c, "ri", 2);
        put16(c + list::Count, static_cast<std::uint32_t>(offsets.size()));
        for (std::size_t i = 0; i < offsets.size(); ++i) put32(c + list::Entries + 4 * i, offsets[i]);
        return at;
    }

    std::uint32_t leaf(const std::vector<Child>& children, std::size_t from, std::size_t to, const char* signature) {
        const bool bare = signature[1] == 'i', hashed = signature[1] == 'h';
        const std::size_t width = bare ? 4 : 8;
        const std::uint32_t at = space_.allocate(list::Entries + width * (to - from));
        std::uint8_t* c = space_.at(at);
        std::memcpy(c, signature, 2);
        put16(c + list::Count, static_cast<std::uint32_t>(to - from));
        c += list::Entries;
        for (std::size_t i = from; i < to; ++i, c += width) {
            put32(c, children[i].offset);
            if (bare) continue;
            const StoredName name = children[i].name.stored();
            if (hashed) {
                put32(c + 4, nameHash(name));
            } else {
                const auto hint = nameHint(name);
                std::copy(hint.begin(), hint.end(), c + 4);
            }
        }
        return at;
    }

    // Values ---------------------------------------------------------------------------------------------------------

    void values(const HiveKey& k, std::uint32_t at) {
        if (isPredefined(k)) {
            put32(space_.at(at) + nk::Values, k.predefinedHandle);
            return;
        }
        if (k.values.empty()) return;
        if (const std::size_t twin = secondOfSameName(k.values); twin != noTwin) {
            throw HiveError("Zwei Werte eines Schlüssels haben denselben Namen: " + k.values[twin].name);
        }
        std::vector<std::uint32_t> offsets;
        offsets.reserve(k.values.size());
        std::uint32_t longestName = 0;
        std::size_t longestData = 0;
        const std::uint32_t listAt = space_.allocate(4 * k.values.size());
        for (std::size_t i = 0; i < k.values.size(); ++i) {
            const std::uint32_t valueAt = value(k.values[i], longestName);
            put32(space_.at(listAt) + 4 * i, valueAt);
            longestData = std::max(longestData, k.values[i].data.bytes.size());
        }
        std::uint8_t* const c = space_.at(at);
        put32(c + nk::Values, static_cast<std::uint32_t>(k.values.size()));
        put32(c + nk::ValueList, listAt);
        put32(c + nk::MaxValueName, longestName);
        put32(c + nk::MaxData, static_cast<std::uint32_t>(longestData));
    }

    std::uint32_t value(const HiveValue& v, std::uint32_t& longestName) {
        const PackedName name = pack(v.name);
        if (name.stored().units() > longestValueName) throw HiveError("Der Name eines Wertes hat höchstens 16383 Zeichen.");
        longestName = std::max(longestName, name.utf16Size());
        const Bytes& bytes = v.data.bytes;
        if (bytes.size() > largestBins) throw HiveError("Die Daten eines Wertes sind zu groß: " + v.name);
        const std::uint32_t at = space_.allocate(vk::Name + name.bytes.size());
        std::uint8_t* c = space_.at(at);
        std::memcpy(c, "vk", 2);
        put16(c + vk::NameSize, static_cast<std::uint32_t>(name.bytes.size()));
        put32(c + vk::Type, v.data.type);
        put16(c + vk::Flags, name.latin1 && !name.bytes.empty() ? vk::Latin1Name : 0u);
        std::copy(name.bytes.begin(), name.bytes.end(), c + vk::Name);
        const auto size = static_cast<std::uint32_t>(bytes.size());
        if (size <= 4) {
            put32(c + vk::DataSize, size | inlineData);
            std::copy(bytes.begin(), bytes.end(), c + vk::Data);
        } else {
            put32(c + vk::DataSize, size);
            const std::uint32_t dataAt = size > bigSegment && minor_ >= firstMinorWithBigData ? bigData(bytes) : raw(bytes.data(), bytes.size());
            put32(space_.at(at) + vk::Data, dataAt);
        }
        return at;
    }

    std::uint32_t bigData(const Bytes& bytes) {
        const std::size_t segments = (bytes.size() + bigSegment - 1) / bigSegment;
        if (segments > 0xFFFF) throw HiveError("Die Daten eines Wertes sind zu groß.");
        const std::uint32_t at = space_.allocate(db::Size), listAt = space_.allocate(4 * segments);
        std::uint8_t* const c = space_.at(at);
        std::memcpy(c, "db", 2);
        put16(c + db::Count, static_cast<std::uint32_t>(segments));
        put32(c + db::List, listAt);
        for (std::size_t i = 0; i < segments; ++i) {
            const std::size_t from = i * bigSegment;
            const std::uint32_t partAt = space_.allocate(bigSegment);   // the last one in full size too, as Windows has it
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(from), std::min<std::size_t>(bigSegment, bytes.size() - from), space_.at(partAt));
            put32(space_.at(listAt) + 4 * i, partAt);
        }
        return at;
    }

    template <class Byte>
    std::uint32_t raw(const Byte* bytes, std::size_t size) {
        const std::uint32_t at = space_.allocate(size);
        std::memcpy(space_.at(at), bytes, size);
        return at;
    }

    // File -----------------------------------------------------------------------------------------------------------

    Bytes finish(std::uint32_t root) {
        const std::uint64_t stamp = options_.lastWritten != 0 ? options_.lastWritten : hive_.lastWritten;
        Bytes file = space_.finish(stamp);
        std::uint8_t* const b = file.data();
        if (hive_.header.size() == headerSize) std::copy(hive_.header.begin(), hive_.header.end(), b);
        const std::uint32_t sequence = hive_.sequence + 1;
        std::memcpy(b, "regf", 4);
        put32(b + header::Sequence1, sequence);
        put32(b + header::Sequence2, sequence);
        put64(b + header::LastWritten, stamp);
        put32(b + header::Major, 1);
        put32(b + header::Minor, minor_);
        put32(b + header::FileType, 0);
        put32(b + header::FileFormat, 1);
        put32(b + header::RootCell, root);
        put32(b + header::BinsSize, static_cast<std::uint32_t>(file.size() - headerSize));
        put32(b + header::Clustering, 1);
        if (!options_.fileName.empty()) fileName(b + header::FileName);
        put32(b + header::Checksum, headerChecksum(b));
        return file;
    }

    void fileName(std::uint8_t* field) const {
        std::u16string units = toUtf16(options_.fileName);
        constexpr std::size_t most = header::FileNameSize / 2 - 1;
        if (units.size() > most) units.erase(0, units.size() - most);
        std::memset(field, 0, header::FileNameSize);
        for (std::size_t i = 0; i < units.size(); ++i) put16(field + 2 * i, units[i]);
    }

    const Hive& hive_;
    const HiveWriteOptions& options_;
    std::uint32_t minor_;
    HiveCellSpace space_;
    const Bytes default_ = defaultDescriptor();
    std::vector<Security> securities_;
    std::vector<std::uint32_t> ring_, known_;
    std::map<std::string_view, std::uint32_t> byContent_;
};

}  // namespace

Bytes writeHive(const Hive& hive, const HiveWriteOptions& options) { return Writer(hive, options).write(); }

}  // namespace brenvik
