#include <tarvo/core/Jacobian.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <vector>

namespace {

void put16(std::ostream& out, std::uint16_t v) {
    const char b[2] = {static_cast<char>(v & 0xff), static_cast<char>(v >> 8)};
    out.write(b, 2);
}

void put32(std::ostream& out, std::uint32_t v) {
    const char b[4] = {static_cast<char>(v & 0xff), static_cast<char>((v >> 8) & 0xff),
                       static_cast<char>((v >> 16) & 0xff), static_cast<char>(v >> 24)};
    out.write(b, 4);
}

// Writes a 24-bit uncompressed bitmap of width w and height h from three planes of w*h bytes each,
// red, green and blue, stored top row first.
bool bmp24Write(const std::string& file, int w, int h, const std::vector<std::uint8_t>& red,
                const std::vector<std::uint8_t>& green, const std::vector<std::uint8_t>& blue) {
    std::ofstream out(file, std::ios::binary);
    if (!out) {
        std::cerr << "BMP_24_WRITE - Fatal error!\n"
                  << "  Could not open the output file.\n";
        return false;
    }
    const std::uint32_t rowBytes = (3 * static_cast<std::uint32_t>(w) + 3) / 4 * 4;
    const std::uint32_t imageBytes = rowBytes * static_cast<std::uint32_t>(h);
    out.write("BM", 2);
    put32(out, 54 + imageBytes);
    put32(out, 0);
    put32(out, 54);
    put32(out, 40);
    put32(out, static_cast<std::uint32_t>(w));
    put32(out, static_cast<std::uint32_t>(h));
    put16(out, 1);
    put16(out, 24);
    put32(out, 0);
    put32(out, imageBytes);
    put32(out, 2835); // 72 dpi
    put32(out, 2835);
    put32(out, 0);
    put32(out, 0);
    std::vector<char> row(rowBytes, 0);
    // The format stores the bottom row first and each pixel as blue, green, red.
    for (int y = h - 1; y >= 0; --y) {
        for (int x = 0; x < w; ++x) {
            const std::size_t k = static_cast<std::size_t>(y) * w + x;
            row[3 * x] = static_cast<char>(blue[k]);
            row[3 * x + 1] = static_cast<char>(green[k]);
            row[3 * x + 2] = static_cast<char>(red[k]);
        }
        out.write(row.data(), rowBytes);
    }
    return static_cast<bool>(out);
}

} // namespace

bool Jacobian::writeBmp(const std::string& file) const {
    const std::size_t n = n_, pixels = n * n;
    std::vector<std::uint8_t> red(pixels, 255), green(pixels, 255), blue(pixels, 255);
    for (unsigned i = 0; i < n_; ++i) {
        for (unsigned j = 0; j < n_; ++j) {
            if (!nonZero(i, j)) continue; // absent: white
            const std::size_t k = i * n + j;
            const double v = (*this)(i, j);
            green[k] = blue[k] = 0;
            if (std::isnan(v)) continue; // red
            red[k] = 0;
            const double decades = std::log10(std::fabs(v));
            if (decades > 0) green[k] = static_cast<std::uint8_t>(std::min(20 * decades, 255.0));
            if (decades < 0) blue[k] = static_cast<std::uint8_t>(std::min(-20 * decades, 255.0));
        }
    }
    if (!bmp24Write(file, static_cast<int>(n_), static_cast<int>(n_), red, green, blue)) {
        std::cerr << "Jacobian2bmp - Fatal error!\n";
        return false;
    }
    return true;
}
