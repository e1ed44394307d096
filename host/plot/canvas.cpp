#include "plot/canvas.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <iterator>
#include <new>

namespace embedded {
namespace {

// What SVG and PDF count in: 72 to the inch.
constexpr double kPointsPerMillimetre = 72.0 / 25.4;
// Lines that are drawn together at most. A long path costs more than its share.
constexpr std::size_t kMostGathered = 1000;

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    auto& bytes = *static_cast<std::vector<unsigned char>*>(closure);
    try {
        bytes.insert(bytes.end(), data, data + length);
    } catch (const std::bad_alloc&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

class Canvas::Inside {
public:
    Inside(PlotFormat format, const PlotPage& page, std::vector<unsigned char>& bytes)
        : m_format(format), m_bytes(bytes) {
        const double wide = page.width * kPointsPerMillimetre;
        const double high = page.height * kPointsPerMillimetre;
        double units = kPointsPerMillimetre;
        switch (format) {
        case PlotFormat::kSvg:
            m_surface = cairo_svg_surface_create_for_stream(append, &bytes, wide, high);
            break;
        case PlotFormat::kPdf:
            m_surface = cairo_pdf_surface_create_for_stream(append, &bytes, wide, high);
            break;
        case PlotFormat::kPng:
            m_surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, page.pixelsWide(), page.pixelsHigh());
            units = page.pixelsPerMillimetre;
            break;
        }
        m_context = cairo_create(m_surface);
        cairo_scale(m_context, units, units);
        cairo_set_line_cap(m_context, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(m_context, CAIRO_LINE_JOIN_ROUND);
    }
    ~Inside() {
        cairo_destroy(m_context);
        cairo_surface_destroy(m_surface);
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

    cairo_t* context() { return m_context; }

    bool finish(std::string& failure) {
        cairo_status_t status = cairo_status(m_context);
        if (status == CAIRO_STATUS_SUCCESS && m_format == PlotFormat::kPng)
            status = cairo_surface_write_to_png_stream(m_surface, append, &m_bytes);
        cairo_surface_finish(m_surface);
        if (status == CAIRO_STATUS_SUCCESS)
            status = cairo_surface_status(m_surface);
        if (status != CAIRO_STATUS_SUCCESS) {
            failure = std::string("the picture cannot be drawn: ") + cairo_status_to_string(status);
            return false;
        }
        if (m_format == PlotFormat::kSvg)
            nameGroup();
        return true;
    }

private:
    // Cairo numbers its surfaces through, so that the same drawing would have another file the next time.
    void nameGroup() {
        const std::string mark = "id=\"surface";
        const auto begin = std::search(m_bytes.begin(), m_bytes.end(), mark.begin(), mark.end());
        if (begin == m_bytes.end())
            return;
        const auto digits = begin + static_cast<std::ptrdiff_t>(mark.size());
        const auto end = std::find(digits, m_bytes.end(), static_cast<unsigned char>('"'));
        m_bytes.erase(digits, end);
    }

    PlotFormat m_format;
    std::vector<unsigned char>& m_bytes;
    cairo_surface_t* m_surface = nullptr;
    cairo_t* m_context = nullptr;
};

namespace {

void setSource(cairo_t* context, Rgb colour) {
    cairo_set_source_rgb(context, colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0);
}

} // namespace

Canvas::Canvas(PlotFormat format, const PlotPage& page, Rgb ground, std::vector<unsigned char>& bytes)
    : m_inside(std::make_unique<Inside>(format, page, bytes)) {
    setSource(m_inside->context(), ground);
    cairo_paint(m_inside->context());
}

Canvas::~Canvas() = default;

void Canvas::flush() {
    if (m_use == Use::kLines && m_gathered != 0) {
        cairo_stroke(m_inside->context());
    } else if (m_use == Use::kAreas && m_gathered != 0) {
        cairo_set_fill_rule(m_inside->context(), CAIRO_FILL_RULE_WINDING);
        cairo_fill(m_inside->context());
    } else {
        cairo_new_path(m_inside->context());
    }
    m_gathered = 0;
}

void Canvas::setPen(Rgb colour, double width) {
    if (isUsedFor(Use::kLines, colour) && width == m_width) {
        // Between two lines, never within one.
        if (m_gathered >= kMostGathered)
            flush();
        return;
    }
    flush();
    m_use = Use::kLines;
    m_colour = colour;
    m_width = width;
    setSource(m_inside->context(), colour);
    cairo_set_line_width(m_inside->context(), width);
}

void Canvas::setBrush(Rgb colour) {
    if (isUsedFor(Use::kAreas, colour) && m_gathered < kMostGathered)
        return;
    flush();
    m_use = Use::kAreas;
    m_colour = colour;
    setSource(m_inside->context(), colour);
}

void Canvas::setOwnBrush(Rgb colour) {
    flush();
    m_use = Use::kNothing;
    setSource(m_inside->context(), colour);
}

void Canvas::move(PagePoint to) { cairo_move_to(m_inside->context(), to.x, to.y); }

void Canvas::line(PagePoint to) {
    cairo_line_to(m_inside->context(), to.x, to.y);
    ++m_gathered;
}

void Canvas::curve(PagePoint first, PagePoint second, PagePoint to) {
    cairo_curve_to(m_inside->context(), first.x, first.y, second.x, second.y, to.x, to.y);
    ++m_gathered;
}

void Canvas::close() { cairo_close_path(m_inside->context()); }

void Canvas::fill(bool evenOdd) {
    cairo_set_fill_rule(m_inside->context(), evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(m_inside->context());
    m_gathered = 0;
}

bool Canvas::finish(std::string& failure) {
    flush();
    return m_inside->finish(failure);
}

} // namespace embedded
