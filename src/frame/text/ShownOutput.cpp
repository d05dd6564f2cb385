#include "frame/text/ShownOutput.h"

#include "frame/text/ShownText.h"

namespace brenvik {
namespace {

constexpr std::size_t MostPending = 65536;      // bytes

}  // namespace

ShownOutput::ShownOutput(std::ostream& stream) : stream_(stream), below_(stream.rdbuf(this)) {}

ShownOutput::~ShownOutput() {
    stream_.flush();
    stream_.rdbuf(below_);
}

void ShownOutput::putRaw(std::ostream& stream, std::string_view bytes) {
    stream.flush();
    const auto length = static_cast<std::streamsize>(bytes.size());
    const auto* guard = dynamic_cast<const ShownOutput*>(stream.rdbuf());
    if (guard == nullptr) stream.write(bytes.data(), length);
    else if (guard->below_->sputn(bytes.data(), length) != length) stream.setstate(std::ios::badbit);
}

ShownOutput::int_type ShownOutput::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char c = traits_type::to_char_type(character);
    return xsputn(&c, 1) == 1 ? character : traits_type::eof();
}

std::streamsize ShownOutput::xsputn(const char* text, std::streamsize length) {
    pending_.append(text, static_cast<std::size_t>(length));
    return pending_.size() < MostPending || pass() ? length : 0;
}

int ShownOutput::sync() { return pass() && below_->pubsync() == 0 ? 0 : -1; }

// Texts are written whole; only where a full buffer ends, what may be the half of a character or of a line end is kept back.
bool ShownOutput::pass() {
    constexpr std::size_t LongestCharacter = 4;
    const auto mayGoOn = [](char c) { return c == '\r' || static_cast<unsigned char>(c) >= 0x80; };
    std::size_t whole = pending_.size();
    if (whole >= MostPending)
        while (pending_.size() - whole < LongestCharacter && mayGoOn(pending_[whole - 1])) --whole;
    const std::string shown = shownText(std::string_view(pending_).substr(0, whole), ShownAs::Lines);
    pending_.erase(0, whole);
    return below_->sputn(shown.data(), static_cast<std::streamsize>(shown.size())) == static_cast<std::streamsize>(shown.size());
}

}  // namespace brenvik
