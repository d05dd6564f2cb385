#include "registry/text/RegText.h"

#include <array>
#include <charconv>
#include <optional>

#include "frame/Errors.h"
#include "frame/text/HexDigit.h"
#include "registry/RegPath.h"
#include "registry/text/RegTextSource.h"

namespace brenvik {

namespace {

struct LineError {
    std::string message;
};

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

// Walks over the text and counts its lines.
class Cursor {
public:
    Cursor(std::string_view text, std::size_t start) : text_(text), at_(start) {}

    bool atEnd() const { return at_ >= text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[at_]; }
    bool atLineEnd() const { return atEnd() || isLineEnd(peek()); }
    std::size_t line() const { return line_; }

    char take() {
        const char c = text_[at_++];
        if (c == '\n' || (c == '\r' && peek() != '\n')) ++line_;
        return c;
    }
    bool takeIf(char c) {
        if (atEnd() || peek() != c) return false;
        take();
        return true;
    }
    void skipBlanks() {
        while (!atEnd() && isBlank(peek())) take();
    }
    void skipLine() {
        while (!atLineEnd()) take();
        takeLineEnd();
    }
    void takeLineEnd() {
        if (takeIf('\r')) {
            takeIf('\n');
        } else {
            takeIf('\n');
        }
    }
    std::string_view restOfLine() const {
        const std::string_view text = rest();
        std::size_t length = 0;
        while (length < text.size() && !isLineEnd(text[length])) ++length;
        return text.substr(0, length);
    }
    std::string_view rest() const { return text_.substr(std::min(at_, text_.size())); }
    std::string_view takePlain() {   // up to the end of a quoted text or what is special in it
        const std::size_t start = at_;
        while (!atLineEnd() && text_[at_] != '"' && text_[at_] != '\\') ++at_;
        return text_.substr(start, at_ - start);
    }
    std::string_view nextHexDigits() const {
        std::size_t end = at_;
        while (end < text_.size() && hexDigit(text_[end]) >= 0) ++end;
        return text_.substr(at_, end - at_);
    }
    void skip(std::size_t count) {   // within one line
        at_ += count;
    }
    struct Mark {
        std::size_t at, line;
    };
    Mark mark() const { return {at_, line_}; }
    void back(Mark mark) {
        at_ = mark.at;
        line_ = mark.line;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

class Parser {
public:
    Parser(const RegTextSource& source, const RegOperationTeller& tell, std::vector<RegTextProblem>& problems)
        : cursor_(source.text, source.start), ansiData_(source.ansiData), tell_(tell), problems_(problems) {}

    void run() {
        while (!cursor_.atEnd() && problems_.size() < MaxRegTextProblems) {
            const Cursor::Mark start = cursor_.mark();
            try {
                parseLine(start.line);
            } catch (const LineError& error) {
                problems_.push_back({start.line, error.message});
                cursor_.back(start);
                skipBrokenEntry();
            }
        }
    }

private:
    void parseLine(std::size_t line) {
        cursor_.skipBlanks();
        if (cursor_.atLineEnd() || isNote(cursor_.peek())) {
            cursor_.skipLine();
        } else if (cursor_.peek() == '[') {
            parseKey(line);
        } else if (cursor_.peek() == '@' || cursor_.peek() == '"') {
            parseValue(line);
        } else {
            throw LineError{"Die Zeile ist weder ein Schlüssel noch ein Wert."};
        }
    }

    // Behind a broken line its continuations would only give more reports of the same fault.
    void skipBrokenEntry() {
        while (true) {
            std::string_view line = cursor_.restOfLine();
            while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
            const bool wrapped = !line.empty() && line.back() == '\\';
            cursor_.skipLine();
            if (!wrapped || cursor_.atEnd()) return;
            skipNotes();
        }
    }

    void endLine() {
        cursor_.skipBlanks();
        if (!cursor_.atLineEnd() && cursor_.peek() != ';') throw LineError{"Hinter dem Eintrag steht noch etwas."};
        cursor_.skipLine();
    }

    // The last bracket of the line ends the key, since names may hold brackets themselves.
    void parseKey(std::size_t line) {
        state_ = State::BrokenKey;
        const std::string_view rest = cursor_.restOfLine();
        const std::size_t close = rest.rfind(']');
        if (close == std::string_view::npos) throw LineError{"Die eckige Klammer des Schlüssels ist nicht geschlossen."};
        std::string_view name = rest.substr(1, close - 1);
        const bool deleted = !name.empty() && name.front() == '-';
        if (deleted) name.remove_prefix(1);
        cursor_.skip(close + 1);
        const RegPath path = pathOf(name);
        endLine();
        if (deleted && path.key.empty()) throw LineError{"Ein Hauptschlüssel kann nicht gelöscht werden."};
        now_ = {};
        now_.root = path.root;
        now_.key = path.key;
        state_ = deleted ? State::NoKey : State::InKey;
        if (deleted || !now_.key.empty()) tell(line, deleted ? RegOperation::Kind::DeleteKey : RegOperation::Kind::CreateKey);
    }

    static RegPath pathOf(std::string_view name) {
        try {
            // As a key, whether or not the text ends in a backslash.
            return parseRegPath(std::string(name) + "\\");
        } catch (const RegError& error) {
            throw LineError{error.what()};
        }
    }

    void parseValue(std::size_t line) {
        const bool unnamed = cursor_.takeIf('@');
        ValueName name = unnamed ? ValueName::unnamed() : ValueName::named(parseQuoted());
        cursor_.skipBlanks();
        if (!cursor_.takeIf('=')) throw LineError{"Hinter dem Wertnamen fehlt das Gleichheitszeichen."};
        cursor_.skipBlanks();
        std::optional<RawValue> value = parseData();
        endLine();
        if (state_ == State::BrokenKey) return;   // its header has been reported
        if (state_ == State::NoKey) throw LineError{"Der Wert gehört zu keinem Schlüssel."};
        now_.name = std::move(name);
        now_.value = value ? std::move(*value) : RawValue();
        tell(line, value ? RegOperation::Kind::SetValue : RegOperation::Kind::DeleteValue);
    }

    std::string parseQuoted() {
        cursor_.take();
        std::string text(cursor_.takePlain());
        while (!cursor_.atEnd()) {
            const char c = cursor_.take();
            if (c == '"') return text;
            if (c != '\\') {
                text += c;
                continue;
            }
            const char escaped = cursor_.peek();
            if (escaped != '\\' && escaped != '"') throw LineError{"Hinter einem umgekehrten Schrägstrich in Anführungszeichen darf nur ein weiterer oder ein Anführungszeichen stehen."};
            text += cursor_.take();
        }
        throw LineError{"Das schließende Anführungszeichen fehlt."};
    }

    // No value: the entry deletes it.
    std::optional<RawValue> parseData() {
        if (cursor_.takeIf('-')) return std::nullopt;
        if (cursor_.peek() == '"') return stringValue(parseQuoted());
        const std::string_view rest = cursor_.restOfLine();
        const std::size_t colon = rest.find(':');
        const std::string_view kind = rest.substr(0, std::min(colon, rest.size()));
        if (colon != std::string_view::npos && kind == "dword") {
            cursor_.skip(colon + 1);
            return dwordValue();
        }
        if (colon != std::string_view::npos && kind.substr(0, 3) == "hex") {
            cursor_.skip(colon + 1);
            return hexValue(kind.substr(3));
        }
        throw LineError{"Die Daten des Wertes sind weder Text noch dword noch hex."};
    }

    static RawValue stringValue(const std::string& text) {
        try {
            return fromText(text, regtype::Sz);
        } catch (const RegError& error) {
            throw LineError{error.what()};
        }
    }

    static std::uint32_t hexNumber(std::string_view digits, std::size_t most, const char* message) {
        std::uint32_t number = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
        if (digits.empty() || digits.size() > most || error != std::errc() || end != digits.data() + digits.size()) throw LineError{message};
        return number;
    }

    RawValue dwordValue() {
        cursor_.skipBlanks();
        const std::string_view rest = cursor_.restOfLine();
        const std::string_view digits = rest.substr(0, rest.find_first_of(" \t;"));
        const std::uint32_t number = hexNumber(digits, 8, "Hinter dword: gehören ein bis acht hexadezimale Ziffern.");
        cursor_.skip(digits.size());
        return {regtype::Dword, {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
                                 static_cast<std::uint8_t>(number >> 16), static_cast<std::uint8_t>(number >> 24)}};
    }

    RawValue hexValue(std::string_view suffix) {
        RawValue value{regtype::Binary, {}};
        if (!suffix.empty()) {
            if (suffix.size() < 3 || suffix.front() != '(' || suffix.back() != ')') throw LineError{"Die Typangabe hinter hex ist ungültig."};
            value.type = hexNumber(suffix.substr(1, suffix.size() - 2), 8, "Die Typangabe hinter hex ist ungültig.");
        }
        value.bytes = parseHexBytes();
        const bool isString = value.type == regtype::Sz || value.type == regtype::ExpandSz || value.type == regtype::MultiSz;
        if (ansiData_ && isString) value.bytes = ansiToUtf16Le(value.bytes);
        return value;
    }

    // Bytes with commas between them; a backslash at the end of a line goes on in the next one.
    Bytes parseHexBytes() {
        Bytes bytes;
        bool wantsByte = false;   // behind a comma
        while (true) {
            skipWrapped();
            if (cursor_.atLineEnd() || cursor_.peek() == ';') break;
            if (!bytes.empty() && !wantsByte) throw LineError{"Zwischen zwei Bytes fehlt das Komma."};
            if (takePlainBytes(bytes)) {
                wantsByte = true;
                continue;
            }
            constexpr const char* BadByte = "Ein Byte besteht aus ein oder zwei hexadezimalen Ziffern.";
            const std::string_view digits = cursor_.nextHexDigits();
            bytes.push_back(static_cast<std::uint8_t>(hexNumber(digits, 2, BadByte)));
            cursor_.skip(digits.size());
            if (!cursor_.atLineEnd() && std::string_view(", \t\\;").find(cursor_.peek()) == std::string_view::npos) throw LineError{BadByte};
            skipWrapped();
            wantsByte = cursor_.takeIf(',');
        }
        return bytes;
    }

    // Two digits and a comma, as far as they go on: what exporters write, and most of the text of a large file.
    bool takePlainBytes(Bytes& bytes) {
        const std::string_view text = cursor_.rest();
        std::size_t at = 0;
        std::array<std::uint8_t, 64> run;   // a line holds about two dozen
        std::size_t count = 0;
        for (; count < run.size() && at + 2 < text.size() && text[at + 2] == ','; at += 3) {
            const int high = hexDigit(text[at]), low = hexDigit(text[at + 1]);
            if (high < 0 || low < 0) break;
            run[count++] = static_cast<std::uint8_t>(high << 4 | low);
        }
        bytes.insert(bytes.end(), run.begin(), run.begin() + count);
        cursor_.skip(at);
        return at > 0;
    }

    void skipWrapped() {
        cursor_.skipBlanks();
        while (!cursor_.atEnd() && cursor_.peek() == '\\') {
            cursor_.take();
            cursor_.skipBlanks();
            if (!cursor_.atLineEnd() && cursor_.peek() != ';') throw LineError{"Hinter dem umgekehrten Schrägstrich am Zeilenende steht noch etwas."};
            if (cursor_.atEnd()) throw LineError{"Die Datei endet mitten in einem Wert."};
            cursor_.skipLine();
            skipNotes();
            cursor_.skipBlanks();
        }
    }

    // Blank lines and comments between the lines of one value; in front of anything else they are none of its own.
    void skipNotes() {
        const Cursor::Mark start = cursor_.mark();
        for (cursor_.skipBlanks(); !cursor_.atEnd() && (cursor_.atLineEnd() || isNote(cursor_.peek())); cursor_.skipBlanks()) cursor_.skipLine();
        if (hexDigit(cursor_.peek()) < 0) cursor_.back(start);
    }
    static bool isNote(char c) { return c == ';' || c == '#'; }

    void tell(std::size_t line, RegOperation::Kind kind) {
        now_.line = line;
        now_.kind = kind;
        tell_(now_);
    }

    enum class State { NoKey, InKey, BrokenKey };
    Cursor cursor_;
    bool ansiData_;
    const RegOperationTeller& tell_;
    std::vector<RegTextProblem>& problems_;
    State state_ = State::NoKey;
    RegOperation now_;   // told again and again, with the key that the lines stand under
};

}  // namespace

namespace {

std::vector<RegTextProblem> read(const RegTextSource& source, const RegOperationTeller& tell) {
    std::vector<RegTextProblem> problems;
    if (!source.problem.empty()) problems.push_back({1, source.problem});
    else Parser(source, tell, problems).run();
    return problems;
}

}  // namespace

RegText parseRegText(std::string_view bytes) {
    RegText result;
    result.problems = read(readRegTextSource(bytes), [&](const RegOperation& operation) { result.operations.push_back(operation); });
    return result;
}

std::vector<RegTextProblem> RegTextFile::each(const RegOperationTeller& tell) const { return read(source_, tell); }

}  // namespace brenvik
