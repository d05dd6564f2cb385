// klick-bauen FILE: writes the click sound of the program, made from scratch: a knock of 900 Hz and a little noise that
// die away within 25 ms. WAV, mono, 16 bits, 22050 samples a second.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

namespace {

constexpr std::uint32_t Rate = 22050, Samples = Rate * 25 / 1000;
constexpr double Pi = 3.14159265358979, Loudness = 9000;

void put(std::string& out, std::uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(number >> (8 * i) & 0xFF);
}

std::string waveform() {
    std::string out;
    std::uint32_t noise = 1;
    for (std::uint32_t i = 0; i < Samples; ++i) {
        const double t = static_cast<double>(i) / Rate;
        noise = noise * 1664525u + 1013904223u;
        const double hiss = static_cast<double>(noise >> 16) / 32768.0 - 1;
        const double attack = std::min(1.0, i / 12.0);
        const double knock = std::sin(2 * Pi * 900 * t) * std::exp(-t * 260) + 0.35 * hiss * std::exp(-t * 700);
        put(out, static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(Loudness * attack * knock))), 2);
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "klick-bauen FILE\n";
        return 2;
    }
    const std::string data = waveform();
    std::string out = "RIFF";
    put(out, static_cast<std::uint32_t>(36 + data.size()), 4);
    out += "WAVEfmt ";
    put(out, 16, 4);
    put(out, 1, 2);          // plain samples
    put(out, 1, 2);          // one channel
    put(out, Rate, 4);
    put(out, Rate * 2, 4);   // bytes a second
    put(out, 2, 2);
    put(out, 16, 2);
    out += "data";
    put(out, static_cast<std::uint32_t>(data.size()), 4);
    std::ofstream file(argv[1], std::ios::binary);
    file << out << data;
    return file.flush() ? 0 : 1;
}
