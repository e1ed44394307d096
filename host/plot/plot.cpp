#include "embedded/plot.h"

#include "gi/draw_view.h"
#include "platform/files.h"
#include "platform/text.h"
#include "plot/plotted_layers.h"
#include "plot/primitive_plotter.h"

#include <cmath>
#include <new>

namespace embedded {
namespace {

constexpr double kMostPixelsInLine = 30000.0;
constexpr double kMostPixels = 400.0e6;
// Millimetres; some 200 inches, which is what a page of PDF may have.
constexpr double kLargestPage = 5080.0;
// No line is thinner than that in millimetres, and in a picture of pixels than one of these.
constexpr double kThinnest = 0.05;

bool isSize(double number) { return std::isfinite(number) && number > 0.0; }

bool checkPage(const PlotPage& page, PlotFormat format, std::string& failure) {
    if (!isSize(page.width) || !isSize(page.height)) {
        failure = "the page has no size";
        return false;
    }
    if (format != PlotFormat::kPng) {
        if (page.width <= kLargestPage && page.height <= kLargestPage)
            return true;
        failure = "the page is larger than 5080 mm";
        return false;
    }
    if (!isSize(page.pixelsPerMillimetre)) {
        failure = "the page has no pixels";
        return false;
    }
    const double wide = page.width * page.pixelsPerMillimetre;
    const double high = page.height * page.pixelsPerMillimetre;
    if (wide <= kMostPixelsInLine && high <= kMostPixelsInLine && wide * high <= kMostPixels)
        return true;
    failure = "the picture would have too many pixels";
    return false;
}

void drawList(const DisplayList& list, AcDbDatabase* database, const ViewParameters& view,
              const PlotPage& page, const PlotStyle& style, PlotFormat format, Canvas& canvas) {
    const double scale = page.height / view.height;
    const PageTransform toPage(eyeToWorldOf(view).inverse(), scale, {page.width / 2.0, page.height / 2.0});
    const double thinnest = format == PlotFormat::kPng ? 1.0 / page.pixelsPerMillimetre : kThinnest;
    LineLooks looks(database, style, scale, thinnest);
    PageLines lines(canvas, page);
    PrimitivePlotter plotter(canvas, lines, looks, toPage);
    PlottedLayers plotted;
    for (const Primitive& primitive : list.primitives)
        if (plotted.has(primitive))
            plotter.draw(primitive);
}

} // namespace

bool plotFormatOf(const std::wstring& path, PlotFormat& format) {
    static const struct {
        const wchar_t* ending;
        PlotFormat format;
    } kEndings[] = {{L".svg", PlotFormat::kSvg}, {L".pdf", PlotFormat::kPdf}, {L".png", PlotFormat::kPng}};
    for (const auto& row : kEndings) {
        const std::wstring ending = row.ending;
        if (path.size() > ending.size() &&
            platform::equalNoCase(path.substr(path.size() - ending.size()), ending)) {
            format = row.format;
            return true;
        }
    }
    return false;
}

AcGeVector3d directionOf(StandardView view) {
    switch (view) {
    case StandardView::kTop:
        return {0.0, 0.0, 1.0};
    case StandardView::kBottom:
        return {0.0, 0.0, -1.0};
    case StandardView::kFront:
        return {0.0, -1.0, 0.0};
    case StandardView::kBack:
        return {0.0, 1.0, 0.0};
    case StandardView::kLeft:
        return {-1.0, 0.0, 0.0};
    case StandardView::kRight:
        return {1.0, 0.0, 0.0};
    case StandardView::kSouthWest:
        return AcGeVector3d(-1.0, -1.0, 1.0).normal();
    case StandardView::kSouthEast:
        return AcGeVector3d(1.0, -1.0, 1.0).normal();
    case StandardView::kNorthEast:
        return AcGeVector3d(1.0, 1.0, 1.0).normal();
    case StandardView::kNorthWest:
        return AcGeVector3d(-1.0, 1.0, 1.0).normal();
    }
    return AcGeVector3d::kZAxis;
}

PlotPage PlotPage::ofPixels(int wide, int high, double perMillimetre) {
    PlotPage page;
    page.width = wide / perMillimetre;
    page.height = high / perMillimetre;
    page.pixelsPerMillimetre = perMillimetre;
    return page;
}

int PlotPage::pixelsWide() const {
    return static_cast<int>(std::lround(std::fmin(std::fmax(width * pixelsPerMillimetre, 1.0), 1.0e9)));
}

int PlotPage::pixelsHigh() const {
    return static_cast<int>(std::lround(std::fmin(std::fmax(height * pixelsPerMillimetre, 1.0), 1.0e9)));
}

bool plot(const DisplayList& list, AcDbDatabase* database, const ViewParameters& view, const PlotPage& page,
          const PlotStyle& style, PlotFormat format, std::vector<unsigned char>& bytes,
          std::string& failure) {
    bytes.clear();
    if (!checkPage(page, format, failure))
        return false;
    if (!isSize(view.height)) {
        failure = "the view has no height";
        return false;
    }
    bool isDone = false;
    try {
        const Rgb ground = style.isDark ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
        Canvas canvas(format, page, ground, bytes);
        drawList(list, database, view, page, style, format, canvas);
        isDone = canvas.finish(failure);
    } catch (const std::bad_alloc&) {
        failure = "there is not enough memory for the picture";
    }
    if (!isDone)
        bytes.clear();
    return isDone;
}

bool plotToFile(const DisplayList& list, AcDbDatabase* database, const ViewParameters& view,
                const PlotPage& page, const PlotStyle& style, const std::wstring& path,
                std::string& failure) {
    PlotFormat format = PlotFormat::kSvg;
    if (!plotFormatOf(path, format)) {
        failure = "the name ends in none of .svg, .pdf and .png";
        return false;
    }
    std::vector<unsigned char> bytes;
    if (!plot(list, database, view, page, style, format, bytes, failure))
        return false;
    const platform::FileResult written = platform::replaceFile(path, bytes.data(), bytes.size());
    if (!written)
        failure = platform::toUtf8(written.message);
    return static_cast<bool>(written);
}

} // namespace embedded
