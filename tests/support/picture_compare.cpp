#include "support/picture_compare.h"

#include "support/golden.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <filesystem>

namespace testing_support {
namespace {

struct Input {
    const std::string& bytes;
    std::size_t at;
};

cairo_status_t readSome(void* closure, unsigned char* data, unsigned int length) {
    auto& input = *static_cast<Input*>(closure);
    if (length > input.bytes.size() - input.at)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, input.bytes.data() + input.at, length);
    input.at += length;
    return CAIRO_STATUS_SUCCESS;
}

cairo_status_t writeSome(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

using Channels = std::array<double, 3>;

// Averages over squares, on white where the picture is transparent.
struct Coarse {
    static constexpr int kSquare = 4;

    explicit Coarse(const Picture& picture)
        : columns((picture.width + kSquare - 1) / kSquare), rows((picture.height + kSquare - 1) / kSquare),
          squares(static_cast<std::size_t>(columns) * rows, Channels{0.0, 0.0, 0.0}) {
        std::vector<int> counts(squares.size(), 0);
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x) {
                const std::uint8_t* pixel =
                    &picture.pixels[(static_cast<std::size_t>(y) * picture.width + x) * 4];
                const std::size_t square =
                    static_cast<std::size_t>(y / kSquare) * columns + static_cast<std::size_t>(x / kSquare);
                const double alpha = pixel[3] / 255.0;
                for (int c = 0; c < 3; ++c)
                    squares[square][c] += alpha * pixel[c] / 255.0 + 1.0 - alpha;
                ++counts[square];
            }
        for (std::size_t i = 0; i < squares.size(); ++i)
            for (double& channel : squares[i])
                channel /= std::max(counts[i], 1);
    }

    const Channels& at(int x, int y) const {
        x = std::clamp(x, 0, columns - 1);
        y = std::clamp(y, 0, rows - 1);
        return squares[static_cast<std::size_t>(y) * columns + x];
    }
    double luminance(int x, int y) const {
        const Channels& c = at(x, y);
        return 0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2];
    }
    double edge(int x, int y) const {
        return std::hypot(luminance(x + 1, y) - luminance(x - 1, y),
                          luminance(x, y + 1) - luminance(x, y - 1)) /
               2.0;
    }

    int columns, rows;
    std::vector<Channels> squares;
};

double apart(const Channels& a, const Channels& b) {
    return (std::fabs(a[0] - b[0]) + std::fabs(a[1] - b[1]) + std::fabs(a[2] - b[2])) / 3.0;
}

// Of a square's colour with its neighbours': what only moved a little stays among them.
double apartAround(const Coarse& a, const Coarse& b, int x, int y) {
    Channels sumA{}, sumB{};
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            for (int c = 0; c < 3; ++c) {
                sumA[c] += a.at(x + dx, y + dy)[c] / 9.0;
                sumB[c] += b.at(x + dx, y + dy)[c] / 9.0;
            }
    return apart(sumA, sumB);
}

bool fromSurface(cairo_surface_t* made, Picture& picture) {
    const bool isThere = cairo_surface_status(made) == CAIRO_STATUS_SUCCESS;
    if (isThere) {
        picture.width = cairo_image_surface_get_width(made);
        picture.height = cairo_image_surface_get_height(made);
        cairo_surface_t* plain =
            cairo_image_surface_create(CAIRO_FORMAT_ARGB32, picture.width, picture.height);
        cairo_t* context = cairo_create(plain);
        cairo_set_source_surface(context, made, 0.0, 0.0);
        cairo_paint(context);
        cairo_destroy(context);
        cairo_surface_flush(plain);
        const unsigned char* data = cairo_image_surface_get_data(plain);
        const int stride = cairo_image_surface_get_stride(plain);
        picture.pixels.resize(static_cast<std::size_t>(picture.width) * picture.height * 4);
        std::uint8_t* to = picture.pixels.data();
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x, to += 4) {
                std::uint32_t pixel = 0;
                std::memcpy(&pixel, data + static_cast<std::size_t>(y) * stride + x * 4, 4);
                const std::uint32_t alpha = pixel >> 24;
                for (int c = 0; c < 3; ++c) {
                    const std::uint32_t channel = pixel >> (16 - 8 * c) & 255;
                    to[c] = static_cast<std::uint8_t>(
                        alpha != 0 ? std::min(255u, (channel * 255 + alpha / 2) / alpha) : 0);
                }
                to[3] = static_cast<std::uint8_t>(alpha);
            }
        cairo_surface_destroy(plain);
    }
    cairo_surface_destroy(made);
    return isThere;
}

} // namespace

std::uint32_t Picture::colourAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height)
        return 0;
    const std::uint8_t* p = &pixels[(static_cast<std::size_t>(y) * width + x) * 4];
    return static_cast<std::uint32_t>(p[0]) << 16 | static_cast<std::uint32_t>(p[1]) << 8 | p[2];
}

std::size_t Picture::count(std::uint32_t colour, int slack) const {
    std::size_t found = 0;
    for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
        bool near = true;
        for (int c = 0; c < 3; ++c)
            near = near && std::abs(int(pixels[i + c]) - int(colour >> (16 - 8 * c) & 255)) <= slack;
        found += near;
    }
    return found;
}

bool readPicture(const std::string& png, Picture& picture) {
    Input input{png, 0};
    return fromSurface(cairo_image_surface_create_from_png_stream(readSome, &input), picture);
}

bool readPictureFile(const std::string& path, Picture& picture) {
    std::string png;
    return readFile(path, png) && readPicture(png, picture);
}

std::string pngOf(const Picture& picture) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, picture.width, picture.height);
    unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    const std::uint8_t* from = picture.pixels.data();
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x, from += 4) {
            const std::uint32_t alpha = from[3];
            const std::uint32_t pixel = alpha << 24 | from[0] * alpha / 255 << 16 |
                                        from[1] * alpha / 255 << 8 | from[2] * alpha / 255;
            std::memcpy(data + static_cast<std::size_t>(y) * stride + x * 4, &pixel, 4);
        }
    cairo_surface_mark_dirty(surface);
    std::string png;
    cairo_surface_write_to_png_stream(surface, writeSome, &png);
    cairo_surface_destroy(surface);
    return png;
}

PictureDifference difference(const Picture& a, const Picture& b) {
    PictureDifference found;
    found.sameSize = a.width == b.width && a.height == b.height;
    if (!found.sameSize || a.pixels.empty())
        return found;
    const Coarse coarseA(a), coarseB(b);
    double edgesApart = 0.0, edges = 0.0;
    for (int y = 0; y < coarseA.rows; ++y)
        for (int x = 0; x < coarseA.columns; ++x) {
            found.mean += apart(coarseA.at(x, y), coarseB.at(x, y));
            found.worst = std::max(found.worst, apartAround(coarseA, coarseB, x, y));
            const double edgeA = coarseA.edge(x, y), edgeB = coarseB.edge(x, y);
            edgesApart += std::fabs(edgeA - edgeB);
            edges += std::max(edgeA, edgeB);
        }
    found.mean /= static_cast<double>(coarseA.squares.size());
    found.edges = edges > 0.0 ? edgesApart / edges : 0.0;
    return found;
}

testing::AssertionResult isGoldenPicture(const std::string& name, const std::string& png,
                                         const PictureDifference& tolerance) {
    const std::string path = goldenPath(name);
    Picture actual, expected;
    if (!readPicture(png, actual))
        return testing::AssertionFailure() << name << ": what was made is no PNG";
    if (rewritesGoldens())
        return writeFile(path, png) ? testing::AssertionSuccess()
                                    : testing::AssertionFailure() << path << " cannot be written";
    const bool isThere = readPictureFile(path, expected);
    const PictureDifference found = isThere ? difference(expected, actual) : PictureDifference();
    if (isThere && found.isWithin(tolerance))
        return testing::AssertionSuccess();
    const std::string kept = (std::filesystem::temp_directory_path() / "taldork-pictures" / name).u8string();
    writeFile(kept, png);
    if (!isThere)
        return testing::AssertionFailure() << path << " is not there; the picture lies in " << kept;
    return testing::AssertionFailure()
           << path << " differs" << (found.sameSize ? "" : " in size") << ": mean " << found.mean
           << ", worst " << found.worst << ", edges " << found.edges << "; the picture lies in " << kept;
}

} // namespace testing_support
