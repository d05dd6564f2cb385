#include "registry/text/RegTextWriter.h"

#include <algorithm>
#include <array>
#include <optional>

#include "frame/Errors.h"
#include "frame/text/Codepage.h"
#include "registry/RegPath.h"
#include "registry/store/RegLinks.h"
#include "registry/text/RegTextSource.h"

namespace brenvik {

namespace {

constexpr std::size_t LongestLine = 78;   // without the backslash that wraps it
constexpr const char* LineEnd = "\r\n";
constexpr const char* WrappedLine = "\\\r\n  ";
constexpr char hexDigits[] = "0123456789abcdef";

// Looks for each of them alone, which goes by many characters at a time.
bool hasLineEnd(std::string_view text) { return text.find('\r') != std::string_view::npos || text.find('\n') != std::string_view::npos; }

bool isString(std::uint32_t type) { return type == regtype::Sz || type == regtype::ExpandSz || type == regtype::MultiSz; }

// A string goes as text only if it comes back as it was and other readers understand it too.
std::optional<std::string> plainText(const RawValue& value) {
    const Bytes& bytes = value.bytes;
    const bool ended = bytes.size() >= 2 && bytes.size() % 2 == 0 && bytes.back() == 0 && bytes[bytes.size() - 2] == 0;
    if (value.type != regtype::Sz || !ended) return std::nullopt;
    std::string text = toText(value);
    if (hasLineEnd(text) || !(fromText(text, regtype::Sz) == value)) return std::nullopt;
    return text;
}

std::string hexNumber(std::uint32_t number, int digits) {
    std::string text;
    for (int shift = 28; shift >= 0; shift -= 4) {
        const std::uint32_t digit = (number >> shift) & 15;
        if (digit != 0 || !text.empty() || shift / 4 < digits) text += hexDigits[digit];
    }
    return text;
}

}  // namespace

RegTextWriter::RegTextWriter(Format format, Drain drain) : format_(format), drain_(std::move(drain)) {
    if (format == Format::Version5) text_ = "\xFF\xFE";
    put(format == Format::Regedit4 ? RegHeader4 : RegHeader5);
    putAscii(LineEnd);
}

void RegTextWriter::putAscii(std::string_view text) {
    if (format_ == Format::Regedit4) {
        text_ += text;
        return;
    }
    const std::size_t at = text_.size();
    text_.resize(at + 2 * text.size());
    char* const units = text_.data() + at;
    for (std::size_t i = 0; i < text.size(); ++i) units[2 * i] = text[i];
}

void RegTextWriter::put(std::string_view text) {
    if (std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; })) {
        putAscii(text);
    } else {
        text_ += format_ == Format::Regedit4 ? ansiFromUtf8(text) : utf16LeFromUtf8(text);
    }
}

void RegTextWriter::putQuoted(std::string_view text) {
    putAscii("\"");
    for (std::size_t at = 0; at < text.size();) {
        std::size_t special = at;
        while (special < text.size() && text[special] != '\\' && text[special] != '"') ++special;
        put(text.substr(at, special - at));
        if (special < text.size()) {
            putAscii("\\");
            putAscii(text.substr(special, 1));
        }
        at = special + 1;
    }
    putAscii("\"");
}

void RegTextWriter::newEntry() {
    constexpr std::size_t piece = 1u << 20;
    if (drain_ && text_.size() > piece) {
        drain_(text_);
        text_.clear();
    }
    lineStart_ = text_.size();
}

void RegTextWriter::comment(std::string_view line) {
    newEntry();
    put(line);
    putAscii(LineEnd);
}

bool RegTextWriter::fits(std::string_view text) const { return format_ == Format::Version5 || fitsAnsi(text); }

bool RegTextWriter::holds(std::string_view key) const { return !hasLineEnd(key) && fits(key); }

void RegTextWriter::omit(std::string_view key, std::optional<ValueName> value) {
    ++lost_;
    if (omitted_.size() < MaxOmissions) omitted_.push_back({root_, std::string(key), std::move(value), {}});
}

void RegTextWriter::noteUnreadable(Root root, std::string_view key, const RegError& error) {
    ++unreadable_;
    if (omitted_.size() < MaxOmissions) omitted_.push_back({root, std::string(key), std::nullopt, error.what()});
    comment("");
    comment("; Nicht lesbar und ausgelassen: " + std::string(longRootName(root)) + (holds(key) ? "\\" + std::string(key) : std::string()));
}

void RegTextWriter::header(std::string_view prefix, Root root, std::string_view key) {
    root_ = root;
    key_ = key;
    keyOmitted_ = !holds(key);
    if (keyOmitted_) return omit(key, std::nullopt);
    newEntry();
    putAscii(LineEnd);
    putAscii("[");
    putAscii(prefix);
    putAscii(longRootName(root));
    if (!key.empty()) putAscii("\\");
    put(key);
    putAscii("]");
    putAscii(LineEnd);
}

void RegTextWriter::key(Root root, std::string_view key) { header("", root, key); }
void RegTextWriter::deleteKey(Root root, std::string_view key) { header("-", root, key); }

bool RegTextWriter::takes(std::string_view name) {
    if (keyOmitted_) return false;
    if (!fits(name)) omit(key_, ValueName::named(std::string(name)));
    return fits(name);
}

void RegTextWriter::name(std::string_view name) {
    newEntry();
    if (name.empty()) {
        putAscii("@=");
    } else {
        putQuoted(name);
        putAscii("=");
    }
}

void RegTextWriter::deleteValue(const ValueName& valueName) {
    if (!takes(valueName.text())) return;
    name(valueName.text());
    putAscii("-");
    putAscii(LineEnd);
}

void RegTextWriter::value(const ValueName& valueName, const RawValue& value) { this->value(valueName.text(), value); }

void RegTextWriter::value(std::string_view valueName, const RawValue& value) {
    if (!takes(valueName)) return;
    const auto text = plainText(value);
    RawValue narrow{value.type, {}};   // of REGEDIT4, which keeps strings in its own code page
    const bool isNarrow = !text && format_ == Format::Regedit4 && isString(value.type);
    if (isNarrow) {
        const std::string ansi = ansiFromUtf8(utf8FromUtf16Le({reinterpret_cast<const char*>(value.bytes.data()), value.bytes.size()}));
        narrow.bytes.assign(ansi.begin(), ansi.end());
    }
    if (text ? !fits(*text) : isNarrow && ansiToUtf16Le(narrow.bytes) != value.bytes) return omit(key_, ValueName::named(std::string(valueName)));
    name(valueName);
    if (text) {
        putQuoted(*text);
    } else if (value.type == regtype::Dword && value.bytes.size() == 4) {
        const auto& b = value.bytes;
        putAscii("dword:");
        putAscii(hexNumber(b[0] | b[1] << 8 | b[2] << 16 | static_cast<std::uint32_t>(b[3]) << 24, 8));
    } else {
        hex(isNarrow ? narrow : value);
    }
    putAscii(LineEnd);
}

void RegTextWriter::hex(const RawValue& value) {
    putAscii(value.type == regtype::Binary ? std::string("hex:") : "hex(" + hexNumber(value.type, 1) + "):");
    std::array<char, LongestLine + 3> line{};
    std::size_t width = column(), length = 0;
    for (std::size_t i = 0; i < value.bytes.size(); ++i) {
        line[length++] = hexDigits[value.bytes[i] >> 4];
        line[length++] = hexDigits[value.bytes[i] & 15];
        if (i + 1 == value.bytes.size()) break;
        line[length++] = ',';
        width += 3;
        if (width + 3 > LongestLine) {
            putAscii({line.data(), length});
            putAscii(WrappedLine);
            length = 0;
            width = 2;
        }
    }
    putAscii({line.data(), length});
}

namespace {

// A key that the format cannot hold takes all below it along.
class TextSink final : public TreeSink {
public:
    TextSink(RegTextWriter& writer, Root root, std::string_view top) : writer_(writer), root_(root), path_(top) {}
    void enter(std::string_view name, const KeyDetails&) override {
        lengths_.push_back(path_.size());
        if (lengths_.size() > 1) path_ = joinKey(path_, name);
        if (omitted_ != 0) return;
        writer_.key(root_, path_);
        if (!writer_.holds(path_)) omitted_ = lengths_.size();
    }
    void value(std::string_view name, const RawValue& value) override {
        if (omitted_ == 0) writer_.value(name, value);
    }
    void leave() override {
        if (omitted_ == lengths_.size()) omitted_ = 0;
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }
    void unreadable(std::string_view name, const RegError& error) override {
        if (omitted_ == 0) writer_.noteUnreadable(root_, lengths_.empty() ? path_ : joinKey(path_, name), error);
    }

private:
    RegTextWriter& writer_;
    Root root_;
    std::string path_;
    std::vector<std::size_t> lengths_;
    std::size_t omitted_ = 0;   // depth of the key that is left out, 0: none
};

}  // namespace

void RegTextWriter::tree(RegStore& store, Root root, std::string_view path) {
    std::vector<std::string> starts = store.linksOut(root, path);
    starts.insert(starts.begin(), std::string(path));
    for (const std::string& start : starts) {
        TextSink sink(*this, root, start);
        store.walk(root, start, sink);
    }
}

std::string RegTextWriter::bytes() const {
    RegTextWriter whole = *this;
    whole.putAscii(LineEnd);
    return std::move(whole.text_);
}

void RegTextWriter::end() {
    putAscii(LineEnd);
    drain_(text_);
    text_.clear();
}

}  // namespace brenvik
