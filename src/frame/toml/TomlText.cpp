#include "frame/toml/TomlText.h"

#include <algorithm>
#include <utility>

#include "frame/text/Codepage.h"

namespace brenvik {
namespace {

// Measures depth and number of values. Knows of the format only what that takes: texts and comments hold neither.
class Measure {
public:
    explicit Measure(std::string_view text) : text_(text), at_(text.substr(0, ByteOrderMark.size()) == ByteOrderMark ? ByteOrderMark.size() : 0) {}

    void run() {
        for (bool newLine = true; at_ < text_.size();) {
            const char c = text_[at_];
            if (newLine && depth_ == 0 && c == '[') checkHeader();
            newLine = c == '\n' || (newLine && isBlank(c));
            switch (c) {
                case '#': skipLine(); continue;
                case '"':
                case '\'': skipText(c); continue;
                case '\n': ++line_; dots_ = 0; break;
                case '[':
                case '{': enter(); break;
                case ']':
                case '}': depth_ -= depth_ > 0; dots_ = 0; break;
                case '=':
                case ',': countValue(); break;
                case '.': if (++dots_ >= MaxTomlDepth) tooDeep(); break;
                default:
                    if (!isAscii(c)) throw TomlError(line_, NotAscii);
            }
            ++at_;
        }
    }

private:
    static constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    // The parser runs into a place it holds for unreachable where it looks for a blank and finds another letter than these.
    static constexpr const char* NotAscii = "Umlaute und andere Zeichen außerhalb von ASCII stehen nur in Anführungszeichen";
    static bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
    static bool isBlank(char c) { return c == ' ' || c == '\t'; }
    // The parser takes for granted that a name begins here.
    void checkHeader() const {
        std::size_t name = at_ + 1;
        while (name < text_.size() && isBlank(text_[name])) ++name;
        if (name < text_.size() && text_[name] == '[') ++name;
        while (name < text_.size() && isBlank(text_[name])) ++name;
        const char c = name < text_.size() ? text_[name] : ']';
        const bool fits = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || std::string_view("_-\"']").find(c) != std::string_view::npos;
        if (!fits) throw TomlError(line_, isAscii(c) ? "die Überschrift des Abschnitts ist nicht zu lesen" : NotAscii);
    }
    [[noreturn]] void tooDeep() const { throw TomlError(line_, "mehr als " + std::to_string(MaxTomlDepth) + " Ebenen ineinander werden nicht gelesen"); }
    void enter() {
        if (++depth_ > MaxTomlDepth) tooDeep();
        countValue();
    }
    void countValue() {
        dots_ = 0;
        if (++values_ > MaxTomlValues) throw TomlError(line_, "mehr als " + std::to_string(MaxTomlValues) + " Werte werden nicht gelesen");
    }
    void skipLine() { at_ = std::min(text_.find('\n', at_), text_.size()); }
    // A backslash that joins lines: the parser looks for blanks behind it.
    void checkContinuation() const {
        const std::size_t next = text_.find_first_not_of(" \t\r\n", at_ + 1);
        if (next != std::string_view::npos && next != at_ + 1 && !isAscii(text_[next])) throw TomlError(line_, "hinter einem \"\\\" am Ende der Zeile beginnt die nächste mit einem Zeichen außerhalb von ASCII");
    }
    // An open text ends with its line, if it is one of several lines with the file.
    void skipText(char quote) {
        const std::string three(3, quote);
        const bool several = text_.compare(at_, 3, three) == 0;
        at_ += several ? 3 : 1;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (c == '\n' && !several) return;
            line_ += c == '\n';
            if (c == '\\' && quote == '"') {
                if (several) checkContinuation();
                ++at_;
                line_ += at_ < text_.size() && text_[at_] == '\n';
            } else if (several ? text_.compare(at_, 3, three) == 0 : c == quote) {
                at_ += several ? 3 : 1;
                for (int own = 0; several && own < 2 && at_ < text_.size() && text_[at_] == quote; ++own) ++at_;   // quotes of the text itself
                return;
            }
        }
    }

    std::string_view text_;
    std::size_t at_, line_ = 1, depth_ = 0, dots_ = 0, values_ = 0;
};

// The parser's own words are English; what they say is told by the few slips that happen.
std::string germanReason(std::string_view description) {
    static constexpr std::pair<std::string_view, const char*> Reasons[] = {
        {"escape sequence", "in doppelten Anführungszeichen leitet \"\\\" ein Sonderzeichen ein; Texte mit \"\\\" stehen in einfachen Anführungszeichen"},
        {"unicode scalar", "in doppelten Anführungszeichen leitet \"\\\" ein Sonderzeichen ein; Texte mit \"\\\" stehen in einfachen Anführungszeichen"},
        {"hex digit", "in doppelten Anführungszeichen leitet \"\\\" ein Sonderzeichen ein; Texte mit \"\\\" stehen in einfachen Anführungszeichen"},
        {"cannot redefine", "dieser Name ist schon vergeben"},
        {"cannot insert", "dieser Name ist schon vergeben"},
        {"parsing string: unescaped control", "der Text ist in seiner Zeile nicht zu Ende, ein Anführungszeichen fehlt"},
        {"parsing literal string: control", "der Text ist in seiner Zeile nicht zu Ende, ein Anführungszeichen fehlt"},
        {"parsing string: encountered", "der Text ist nicht zu Ende, ein Anführungszeichen fehlt"},
        {"parsing literal string: encountered", "der Text ist nicht zu Ende, ein Anführungszeichen fehlt"},
        {"control character", "hier steht ein Steuerzeichen"},
        {"could not determine value type", "der Wert ist nicht zu lesen; Texte stehen in Anführungszeichen"},
        {"parsing key-value pair: encountered", "zum Namen fehlt der Wert"},
        {"parsing key-value pair: expected '='", "hinter dem Namen fehlt das Gleichheitszeichen"},
        {"parsing key-value pair: expected value", "zum Namen fehlt der Wert"},
        {"parsing key-value pair: expected a comment", "hinter dem Wert steht noch etwas"},
        {"value-terminator", "hinter dem Wert steht noch etwas"},
        {"parsing key", "der Name ist nicht zu lesen"},
        {"parsing table header", "die Überschrift des Abschnitts ist nicht zu lesen"},
        {"parsing array", "die Liste ist nicht zu lesen"},
        {"parsing inline table", "der Abschnitt in geschweiften Klammern ist nicht zu lesen"},
        {"parsing boolean", "hier wird true oder false erwartet"},
    };
    const auto hit = std::find_if(std::begin(Reasons), std::end(Reasons), [&](const auto& r) { return description.find(r.first) != std::string_view::npos; });
    return hit != std::end(Reasons) ? hit->second : "der Wert ist nicht zu lesen; Texte stehen in Anführungszeichen";
}

}  // namespace

toml::table parseToml(std::string_view text) {
    if (text.size() > MaxTomlBytes) throw TomlError(1, "die Datei ist größer als " + std::to_string(MaxTomlBytes >> 20) + " MB");
    if (!isUtf8(text)) throw TomlError(1, "die Datei ist nicht in UTF-8 geschrieben");
    Measure(text).run();
    try {
        return toml::parse(text);
    } catch (const toml::parse_error& error) {
        throw TomlError(error.source().begin.line, germanReason(error.description()) + " (Spalte " + std::to_string(error.source().begin.column) + ")");
    }
}

}  // namespace brenvik
