#pragma once
// While one lives, all that goes to a stream (std::cout, std::cerr) comes out as shownText shows lines, so that nothing from
// outside drives the terminal. Bytes that are meant as they are take the way past it.
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace brenvik {

class ShownOutput : public std::streambuf {
public:
    explicit ShownOutput(std::ostream& stream);
    ~ShownOutput() override;
    ShownOutput(const ShownOutput&) = delete;
    ShownOutput& operator=(const ShownOutput&) = delete;

    // Writes bytes unchanged to a stream, whether or not it is under such a guard; the stream's state tells a failure.
    static void putRaw(std::ostream& stream, std::string_view bytes);

private:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize length) override;
    int sync() override;
    bool pass();

    std::ostream& stream_;
    std::streambuf* below_;
    std::string pending_;
};

}  // namespace brenvik
