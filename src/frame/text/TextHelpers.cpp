// Case, order and pieces of texts.
#include <algorithm>
#include <utility>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Characters.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

template <class Map> std::string mapped(std::string_view text, Map map) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) characters::append(result, map(characters::next(text, place)));
    return result;
}

// Order of one base letter: signs, digits, letters, everything else. Fits 24 bits and is never 0.
std::uint32_t weightOf(char32_t c) {
    const auto plain = static_cast<std::uint32_t>(c & 0x1FFFFF) + 1;
    if (c & characters::BadByte) return 3U << 22 | plain;
    if (c >= U'0' && c <= U'9') return 1U << 22 | plain;
    if ((c >= U'a' && c <= U'z') || (c > 0xFF && c != 0x20AC && (c < 0x2010 || c > 0x206F))) return 2U << 22 | plain;
    return plain;
}

// The base letters of a text, one after the other; 0 at the end.
class Weights {
public:
    explicit Weights(std::string_view text) : text_(text) {}
    std::uint32_t next() {
        if (pending_ != 0) return weightOf(std::exchange(pending_, 0));
        if (place_ >= text_.size()) return 0;
        const characters::Base letters = characters::base(characters::lower(characters::next(text_, place_)));
        pending_ = letters.second;
        return weightOf(letters.first);
    }

private:
    std::string_view text_;
    std::size_t place_ = 0;
    char32_t pending_ = 0;
};

}  // namespace

std::string upperCase(std::string_view text) { return mapped(text, characters::upper); }
std::string lowerCase(std::string_view text) { return mapped(text, characters::lower); }

int compareText(std::string_view left, std::string_view right) {
    Weights leftWeights(left), rightWeights(right);
    for (;;) {
        const std::uint32_t l = leftWeights.next(), r = rightWeights.next();
        if (l != r) return l < r ? -1 : 1;
        if (l == 0) break;
    }
    std::size_t l = 0, r = 0;
    while (l < left.size() && r < right.size()) {
        const char32_t leftLetter = characters::lower(characters::next(left, l)), rightLetter = characters::lower(characters::next(right, r));
        if (leftLetter != rightLetter) return leftLetter < rightLetter ? -1 : 1;
    }
    return l < left.size() ? 1 : r < right.size() ? -1 : 0;
}

std::string sortKey(std::string_view text) {
    std::string key;
    const auto put = [&](std::uint32_t weight) {
        for (const int shift : {16, 8, 0}) key += static_cast<char>(static_cast<unsigned char>(weight >> shift & 0xFF));
    };
    Weights weights(text);
    while (const std::uint32_t weight = weights.next()) put(weight);
    put(0);
    for (std::size_t place = 0; place < text.size();) {
        const char32_t letter = characters::lower(characters::next(text, place));
        put((letter & characters::BadByte ? 0x800000U : 0U) | static_cast<std::uint32_t>(letter & 0x1FFFFF));
    }
    return key;
}

std::size_t textLength(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t place = 0; place < text.size(); ++count) characters::next(text, place);
    return count;
}

std::string Left(std::string_view text, std::size_t count) { return std::string(text.substr(0, characters::byteOf(text, count))); }

std::string Right(std::string_view text, std::size_t count) {
    const std::size_t length = textLength(text);
    return std::string(text.substr(characters::byteOf(text, length > count ? length - count : 0)));
}

std::string Mid(std::string_view text, std::size_t start) {
    if (start == 0) throw NumberedError(errnum::InvalidCall, "Ungültiger Prozeduraufruf");
    return std::string(text.substr(characters::byteOf(text, start - 1)));
}

std::string Mid(std::string_view text, std::size_t start, std::size_t count) { return Left(Mid(text, start), count); }

std::size_t InStr(std::size_t start, std::string_view text, std::string_view wanted) {
    if (start == 0) throw NumberedError(errnum::InvalidCall, "Ungültiger Prozeduraufruf");
    if (start > textLength(text)) return 0;
    const std::size_t hit = text.find(wanted, characters::byteOf(text, start - 1));
    return hit == std::string_view::npos ? 0 : textLength(text.substr(0, hit)) + 1;
}

std::size_t InStr(std::string_view text, std::string_view wanted) { return InStr(1, text, wanted); }

std::string Replace(std::string_view text, std::string_view wanted, std::string_view by) {
    if (wanted.empty()) return std::string(text);
    std::string result;
    for (std::size_t place = 0;;) {
        const std::size_t hit = text.find(wanted, place);
        result += text.substr(place, hit - place);
        if (hit == std::string_view::npos) return result;
        result += by;
        place = hit + wanted.size();
    }
}

std::string ReplaceFirst(std::string_view text, std::string_view wanted, std::string_view by) {
    const std::size_t hit = wanted.empty() ? std::string_view::npos : text.find(wanted);
    if (hit == std::string_view::npos) return std::string(text);
    return std::string(text.substr(0, hit)).append(by).append(text.substr(hit + wanted.size()));
}

std::string LTrim(std::string_view text) { return std::string(text.substr(std::min(text.find_first_not_of(' '), text.size()))); }
std::string RTrim(std::string_view text) { return std::string(text.substr(0, text.find_last_not_of(' ') + 1)); }
std::string Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
    if (text.empty()) return {};
    if (separator.empty()) return {std::string(text)};
    std::vector<std::string> pieces;
    for (;;) {
        const std::size_t hit = text.find(separator);
        pieces.emplace_back(text.substr(0, hit));
        if (hit == std::string_view::npos) return pieces;
        text.remove_prefix(hit + separator.size());
    }
}

std::string SQLString(std::string_view text) {
    std::string result;
    for (const char c : text) result.append(c == '"' || c == '\'' || c == '\r' || c == '\n' ? 2 : 1, c);
    return result;
}

void SelectionSort(FrameContext& ctx, std::vector<std::string>& texts, std::int16_t first, std::int16_t last) {
    ProcTrace trace(ctx.trace, "SelectionSort");
    reportAndGoOn(ctx, "SelectionSort", [&] {
        if (first > last) return;
        if (first < 0 || static_cast<std::size_t>(last) >= texts.size())
            throw NumberedError(errnum::Subscript, "Index außerhalb des gültigen Bereichs");
        std::stable_sort(texts.begin() + first, texts.begin() + last + 1,
                         [](const std::string& left, const std::string& right) { return compareText(left, right) < 0; });
    });
}

}  // namespace brenvik
