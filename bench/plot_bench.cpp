#include "embedded/host_start.h"
#include "embedded/plot.h"
#include "ratio.h"

#include <benchmark/benchmark.h>
#include <cairo-svg.h>

#include <cmath>
#include <vector>

// A display list as thousands of line loads make it, drawn to SVG and PNG; beside Cairo drawing the same
// lines from an array, one path for each thousand of them.

namespace {

constexpr int kLoads = 10000;
constexpr int kArrows = 51;
// Of each arrow: the shaft, and a line of its head.
constexpr int kLines = 2;
constexpr double kPointsPerMillimetre = 72.0 / 25.4;
constexpr std::size_t kInPath = 1000;

struct Line {
    AcGePoint3d from, to;
};

std::vector<Line> linesOfLoads() {
    std::vector<Line> lines;
    lines.reserve(std::size_t{kLoads} * kArrows * kLines);
    for (int load = 0; load < kLoads; ++load) {
        const double x = load % 100 * 6.0, y = load / 100 * 4.0;
        for (int arrow = 0; arrow < kArrows; ++arrow) {
            const AcGePoint3d foot(x + arrow * 0.1, y, 0.0);
            lines.push_back({foot, {foot.x, y + 1.0 + 0.5 * std::sin(arrow * 0.2), 0.0}});
            lines.push_back({foot, {foot.x + 0.04, y + 0.12, 0.0}});
        }
    }
    return lines;
}

const embedded::DisplayList& list() {
    static const embedded::DisplayList made = [] {
        embedded::startHost();
        embedded::DisplayList drawn;
        for (const Line& line : linesOfLoads()) {
            embedded::Primitive primitive;
            primitive.points = {line.from, line.to};
            primitive.traits.colour = 1;
            drawn.primitives.push_back(std::move(primitive));
        }
        return drawn;
    }();
    return made;
}

embedded::PlotPage page() { return embedded::PlotPage::ofPixels(1600, 1100); }

const embedded::ViewParameters& view() {
    static const embedded::ViewParameters made =
        embedded::fittedView(list(), embedded::ViewParameters(), page());
    return made;
}

void plotAs(benchmark::State& state, embedded::PlotFormat format) {
    list();
    view();
    for (auto _ : state) {
        std::vector<unsigned char> bytes;
        std::string failure;
        if (!embedded::plot(list(), nullptr, view(), page(), {}, format, bytes, failure))
            state.SkipWithError(failure.c_str());
        benchmark::DoNotOptimize(bytes.data());
    }
}

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    auto& bytes = *static_cast<std::vector<unsigned char>*>(closure);
    bytes.insert(bytes.end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

struct Flat {
    double x1, y1, x2, y2;
};

// Millimetres of the page, ready to be drawn.
const std::vector<Flat>& flatLines() {
    static const std::vector<Flat> made = [] {
        const double scale = page().height / view().height;
        const double x = page().width / 2.0 - view().target.x * scale;
        const double y = page().height / 2.0 + view().target.y * scale;
        std::vector<Flat> flat;
        for (const Line& line : linesOfLoads())
            flat.push_back({x + line.from.x * scale, y - line.from.y * scale, x + line.to.x * scale,
                            y - line.to.y * scale});
        return flat;
    }();
    return made;
}

void drawFlat(cairo_surface_t* surface, double units) {
    cairo_t* context = cairo_create(surface);
    cairo_scale(context, units, units);
    cairo_set_source_rgb(context, 1.0, 1.0, 1.0);
    cairo_paint(context);
    cairo_set_source_rgb(context, 1.0, 0.0, 0.0);
    cairo_set_line_width(context, 0.2646);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    std::size_t inPath = 0;
    for (const Flat& line : flatLines()) {
        cairo_move_to(context, line.x1, line.y1);
        cairo_line_to(context, line.x2, line.y2);
        if (++inPath % kInPath == 0)
            cairo_stroke(context);
    }
    cairo_stroke(context);
    cairo_destroy(context);
}

void PlotLinesSvg(benchmark::State& state) { plotAs(state, embedded::PlotFormat::kSvg); }

void PlotLinesPng(benchmark::State& state) { plotAs(state, embedded::PlotFormat::kPng); }

void CairoLinesSvg(benchmark::State& state) {
    flatLines();
    for (auto _ : state) {
        std::vector<unsigned char> bytes;
        cairo_surface_t* surface = cairo_svg_surface_create_for_stream(
            append, &bytes, page().width * kPointsPerMillimetre, page().height * kPointsPerMillimetre);
        drawFlat(surface, kPointsPerMillimetre);
        cairo_surface_finish(surface);
        cairo_surface_destroy(surface);
        benchmark::DoNotOptimize(bytes.data());
    }
}

void CairoLinesPng(benchmark::State& state) {
    flatLines();
    for (auto _ : state) {
        std::vector<unsigned char> bytes;
        cairo_surface_t* surface =
            cairo_image_surface_create(CAIRO_FORMAT_RGB24, page().pixelsWide(), page().pixelsHigh());
        drawFlat(surface, page().pixelsPerMillimetre);
        cairo_surface_write_to_png_stream(surface, append, &bytes);
        cairo_surface_destroy(surface);
        benchmark::DoNotOptimize(bytes.data());
    }
}

BENCHMARK(PlotLinesSvg)->Unit(benchmark::kMillisecond)->Repetitions(3)->Iterations(1);
BENCHMARK(CairoLinesSvg)->Unit(benchmark::kMillisecond)->Repetitions(3)->Iterations(1);
BENCHMARK(PlotLinesPng)->Unit(benchmark::kMillisecond)->Repetitions(3)->Iterations(1);
BENCHMARK(CairoLinesPng)->Unit(benchmark::kMillisecond)->Repetitions(3)->Iterations(1);

const Comparison kSvg("a million lines to SVG / the same in Cairo", "PlotLinesSvg", "CairoLinesSvg", 1.5);
const Comparison kPng("a million lines to PNG / the same in Cairo", "PlotLinesPng", "CairoLinesPng", 1.5);

} // namespace
