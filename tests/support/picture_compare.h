#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace testing_support {

// A picture in memory: rows from the top, each pixel red, green, blue, alpha, alpha not multiplied in.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    // The pixel as 0xRRGGBB; what is outside is 0.
    std::uint32_t colourAt(int x, int y) const;
    // How many pixels are within `slack` of a colour in each of the three channels.
    std::size_t count(std::uint32_t colour, int slack = 8) const;
};

// Reads a PNG from memory. False for what is none.
bool readPicture(const std::string& png, Picture& picture);
// From a file.
bool readPictureFile(const std::string& path, Picture& picture);
// As PNG.
std::string pngOf(const Picture& picture);

// How much two pictures differ to the eye, each from 0 to 1. Both are averaged over squares of 4 pixels
// first, so that a line that is a fraction of a pixel aside counts little.
struct PictureDifference {
    double mean = 0.0;  // of the three channels, over all squares
    double worst = 0.0; // of the square that differs most, with its eight neighbours
    double edges = 0.0; // of the edges' strength, over the squares where one of the two has an edge
    bool sameSize = true;

    bool isWithin(const PictureDifference& limit) const {
        return sameSize && mean <= limit.mean && worst <= limit.worst && edges <= limit.edges;
    }
};
PictureDifference difference(const Picture& a, const Picture& b);

// What pictures of the same list on two machines may differ by.
constexpr PictureDifference kUsualTolerance{0.004, 0.12, 0.10, true};

// Whether a PNG looks like the one below tests/golden (see support/golden.h). After a failure the actual
// picture lies in the folder for temporary files, and the message names it.
testing::AssertionResult isGoldenPicture(const std::string& name, const std::string& png,
                                         const PictureDifference& tolerance = kUsualTolerance);

} // namespace testing_support
