#include "registry/RegTextWriter.h"

#include "frame/Codepage.h"
#include "frame/Errors.h"
#include "registry/RegPath.h"
#include "registry/RegTextSource.h"

namespace brenvik {

namespace {

constexpr std::size_t LongestLine = 78;   // without the backslash that wraps it
constexpr const char* LineEnd = "\r\n";
constexpr char hexDigits[] = "0123456789abcdef";

std::string escaped(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '\\' || c == '"') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

bool isString(std::uint32_t type) { return type == regtype::Sz || type == regtype::ExpandSz || type == regtype::MultiSz; }

// A string goes as text only if it comes back as it was and other readers understand it too.
bool isPlainText(const RawValue& value) {
    if (value.type != regtype::Sz) return false;
    const std::string text = toText(value);
    return text.find_first_of("\r\n") == std::string::npos && fromText(text, regtype::Sz) == value;
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

RegTextWriter::RegTextWriter(Format format)
    : format_(format), text_(std::string(format == Format::Regedit4 ? RegHeader4 : RegHeader5) + LineEnd) {}

void RegTextWriter::comment(std::string_view line) { text_.append(line).append(LineEnd); }

void RegTextWriter::noteFit(std::string_view text) {
    if (format_ == Format::Regedit4 && !fitsAnsi(text)) ++lost_;
}

void RegTextWriter::header(std::string_view prefix, Root root, std::string_view key) {
    if (key.find_first_of("\r\n") != std::string_view::npos) ++lost_;
    noteFit(key);
    text_.append(LineEnd).append("[").append(prefix).append(longRootName(root));
    if (!key.empty()) text_.append("\\").append(key);
    text_.append("]").append(LineEnd);
}

void RegTextWriter::key(Root root, std::string_view key) { header("", root, key); }
void RegTextWriter::deleteKey(Root root, std::string_view key) { header("-", root, key); }

void RegTextWriter::name(const ValueName& name) {
    noteFit(name.text());
    text_ += (name.isUnnamed() ? std::string("@") : escaped(name.text())) + "=";
}

void RegTextWriter::deleteValue(const ValueName& valueName) {
    name(valueName);
    text_.append("-").append(LineEnd);
}

void RegTextWriter::value(const ValueName& valueName, const RawValue& value) {
    name(valueName);
    if (isPlainText(value)) {
        noteFit(toText(value));
        text_ += escaped(toText(value));
    } else if (value.type == regtype::Dword && value.bytes.size() == 4) {
        const auto& b = value.bytes;
        text_ += "dword:" + hexNumber(b[0] | b[1] << 8 | b[2] << 16 | static_cast<std::uint32_t>(b[3]) << 24, 8);
    } else if (format_ == Format::Regedit4 && isString(value.type)) {
        const std::string ansi = ansiFromUtf8(utf8FromUtf16Le({reinterpret_cast<const char*>(value.bytes.data()), value.bytes.size()}));
        const RawValue narrow{value.type, {ansi.begin(), ansi.end()}};
        if (ansiToUtf16Le(narrow.bytes) != value.bytes) ++lost_;
        hex(narrow);
    } else {
        hex(value);
    }
    text_ += LineEnd;
}

void RegTextWriter::hex(const RawValue& value) {
    text_ += value.type == regtype::Binary ? std::string("hex:") : "hex(" + hexNumber(value.type, 1) + "):";
    std::size_t column = text_.size() - (text_.rfind('\n') + 1);
    for (std::size_t i = 0; i < value.bytes.size(); ++i) {
        const bool last = i + 1 == value.bytes.size();
        text_ += hexDigits[value.bytes[i] >> 4];
        text_ += hexDigits[value.bytes[i] & 15];
        if (last) break;
        text_ += ',';
        column += 3;
        if (column + 3 > LongestLine) {
            text_.append("\\").append(LineEnd).append("  ");
            column = 2;
        }
    }
}

namespace {

class TextSink final : public TreeSink {
public:
    TextSink(RegTextWriter& writer, Root root, std::string_view top) : writer_(writer), root_(root), path_(top) {}
    void enter(std::string_view name, const KeyDetails&) override {
        lengths_.push_back(path_.size());
        if (lengths_.size() > 1) {
            if (!path_.empty()) path_ += '\\';
            path_ += name;
        }
        writer_.key(root_, path_);
    }
    void value(std::string_view name, const RawValue& value) override { writer_.value(ValueName::named(std::string(name)), value); }
    void leave() override {
        path_.resize(lengths_.back());
        lengths_.pop_back();
    }

private:
    RegTextWriter& writer_;
    Root root_;
    std::string path_;
    std::vector<std::size_t> lengths_;
};

}  // namespace

void RegTextWriter::tree(RegStore& store, Root root, std::string_view path) {
    TextSink sink(*this, root, path);
    store.walk(root, path, sink);
}

std::string RegTextWriter::bytes() const {
    const std::string whole = text_ + LineEnd;
    return format_ == Format::Regedit4 ? ansiFromUtf8(whole) : "\xFF\xFE" + utf16LeFromUtf8(whole);
}

}  // namespace brenvik
