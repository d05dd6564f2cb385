#include "tipdb/sql/Statement.h"

#include <algorithm>
#include <array>
#include <vector>

namespace brenvik {

namespace {

bool isWordByte(char c) {
    const auto b = static_cast<unsigned char>(c);
    return b == '_' || b >= 0x80 || (b >= '0' && b <= '9') || ((b | 32) >= 'a' && (b | 32) <= 'z');
}

bool sameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return (x >= 'A' && x <= 'Z' ? x + 32 : x) == (y >= 'A' && y <= 'Z' ? y + 32 : y);
    });
}

struct Piece {
    std::string_view text;
    bool word = false;
};

// Words, quoted texts (quotes included) and single other characters, in order; nothing is left out.
std::vector<Piece> piecesOf(std::string_view sql) {
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < sql.size();) {
        std::size_t end = i + 1;
        const bool word = isWordByte(sql[i]);
        if (word) {
            while (end < sql.size() && isWordByte(sql[end])) ++end;
        } else if (sql[i] == '\'' || sql[i] == '"' || sql[i] == '[') {
            const auto close = sql.find(sql[i] == '[' ? ']' : sql[i], end);
            end = close == std::string_view::npos ? sql.size() : close + 1;
        }
        pieces.push_back({sql.substr(i, end - i), word});
        i = end;
    }
    return pieces;
}

bool isBlank(const Piece& piece) {
    return piece.text.size() == 1 && std::string_view(" \t\r\n").find(piece.text[0]) != std::string_view::npos;
}

}  // namespace

std::string quoteIndexWord(std::string_view sql) {
    std::string result;
    result.reserve(sql.size() + 8);
    for (const Piece& piece : piecesOf(sql)) {
        const bool quote = piece.word && sameWord(piece.text, "index");
        if (quote) result += '"';
        result += piece.text;
        if (quote) result += '"';
    }
    return result;
}

std::optional<std::string> wholeTableOf(std::string_view sql) {
    std::vector<Piece> pieces = piecesOf(sql);
    pieces.erase(std::remove_if(pieces.begin(), pieces.end(), isBlank), pieces.end());
    if (pieces.size() != 4 || !sameWord(pieces[0].text, "select") || pieces[1].text != "*" ||
        !sameWord(pieces[2].text, "from") || !pieces[3].word)
        return std::nullopt;
    return std::string(pieces[3].text);
}

std::string firstTableOf(std::string_view sql) {
    bool next = false;
    for (const Piece& piece : piecesOf(sql)) {
        if (next && piece.word) return std::string(piece.text);
        next = next ? isBlank(piece) : piece.word && sameWord(piece.text, "from");
    }
    return {};
}

bool wantsTableOrder(std::string_view sql) {
    static constexpr std::array<std::string_view, 7> Words = {"order", "group", "limit", "union", "distinct", "except", "intersect"};
    const std::vector<Piece> pieces = piecesOf(sql);
    return std::none_of(pieces.begin(), pieces.end(), [](const Piece& piece) {
        return piece.text == ";" || (piece.word && std::any_of(Words.begin(), Words.end(), [&](std::string_view w) { return sameWord(piece.text, w); }));
    });
}

}  // namespace brenvik
