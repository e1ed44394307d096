#include "gi/glyph_outline.h"

#include "gi/installed_fonts.h"
#include "platform/sanitizer.h"
#include "platform/text.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace embedded {
namespace {

// Letters are set that large, so that nothing is rounded that could be seen.
constexpr double kEmSize = 1000.0;
// A line longer than that is set piece by piece: Pango's and Cairo's own units end before it is over.
constexpr std::size_t kLongestPiece = 400;
// What is kept of texts that were set; drawings have few different ones, compared with how often they are
// there.
constexpr std::size_t kMostKept = 4096;
constexpr std::size_t kMostFonts = 256;
// Where a font has no H: the share of the size that capital letters usually have.
constexpr double kUsualCapitalHeight = 0.72;

struct LayoutDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using GObjectPointer = std::unique_ptr<T, LayoutDeleter>;

// Sets lines of text with Pango. One for the process, made when the first text is measured or drawn.
class TextSetter {
public:
    TextSetter();
    ~TextSetter();
    TextSetter(const TextSetter&) = delete;
    TextSetter& operator=(const TextSetter&) = delete;

    double width(const std::wstring& text, const TextSetting& setting) { return kept(text, setting).width; }
    std::shared_ptr<const GlyphOutline> outline(const std::wstring& text, const TextSetting& setting);

private:
    struct Font {
        FontFace face;
        double capitalHeight = kEmSize * kUsualCapitalHeight;
    };
    struct Kept {
        double width = 0.0;
        std::shared_ptr<const GlyphOutline> outline;
    };
    using Key = std::tuple<std::wstring, double, std::wstring>;

    const Font& font(const std::wstring& name);
    Kept& kept(const std::wstring& text, const TextSetting& setting);
    void takeFont(const FontFace& face);
    double setPiece(const std::wstring& text);
    void addPiece(double before, double scale, GlyphOutline& outline);
    template <class Do>
    double forEachPiece(const std::wstring& text, double tracking, Do&& action);

    GObjectPointer<PangoFontMap> m_fonts;
    GObjectPointer<PangoContext> m_context;
    GObjectPointer<PangoLayout> m_layout;
    cairo_t* m_paths = nullptr;
    InstalledFonts m_installed;
    std::map<std::wstring, Font> m_known;
    std::map<Key, Kept> m_kept;
};

TextSetter::TextSetter() : m_fonts(pango_cairo_font_map_new()) {
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(m_fonts.get()), 72.0);
    m_context.reset(pango_font_map_create_context(m_fonts.get()));
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(m_context.get(), options);
    pango_context_set_round_glyph_positions(m_context.get(), FALSE);
    // The same in every language that the user's system may be set to.
    pango_context_set_language(m_context.get(), pango_language_from_string("en"));
    m_layout.reset(pango_layout_new(m_context.get()));
    pango_layout_set_single_paragraph_mode(m_layout.get(), TRUE);
    cairo_surface_t* nothing = cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr);
    m_paths = cairo_create(nothing);
    cairo_surface_destroy(nothing);
    cairo_set_font_options(m_paths, options);
    cairo_font_options_destroy(options);
}

TextSetter::~TextSetter() {
    cairo_destroy(m_paths);
    m_layout.reset();
    m_context.reset();
    m_fonts.reset();
#if PLATFORM_CHECKS_LEAKS
    // These two keep their caches until the process ends, behind pointers that a leak checker cannot follow.
    cairo_debug_reset_static_data();
    FcFini();
#endif
}

void TextSetter::takeFont(const FontFace& face) {
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, face.family.c_str());
    pango_font_description_set_weight(description, face.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(description, face.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(description, kEmSize * PANGO_SCALE);
    pango_layout_set_font_description(m_layout.get(), description);
    pango_font_description_free(description);
}

// Puts a piece into the layout. Answers its width.
double TextSetter::setPiece(const std::wstring& text) {
    const std::string narrow = platform::toUtf8(text);
    // A lone half of a pair is no letter; Pango would complain on the console.
    char* valid = g_utf8_make_valid(narrow.data(), static_cast<gssize>(narrow.size()));
    pango_layout_set_text(m_layout.get(), valid, -1);
    g_free(valid);
    PangoRectangle logical;
    pango_layout_get_extents(m_layout.get(), nullptr, &logical);
    return static_cast<double>(logical.width) / PANGO_SCALE;
}

const TextSetter::Font& TextSetter::font(const std::wstring& name) {
    const auto known = m_known.find(name);
    if (known != m_known.end())
        return known->second;
    if (m_known.size() >= kMostFonts)
        m_known.clear();
    Font& made = m_known[name];
    made.face = m_installed.face(name);
    takeFont(made.face);
    setPiece(L"H");
    PangoRectangle ink;
    pango_layout_line_get_extents(pango_layout_get_line_readonly(m_layout.get(), 0), &ink, nullptr);
    const double above = static_cast<double>(-ink.y) / PANGO_SCALE;
    if (above > 0.0)
        made.capitalHeight = above;
    return made;
}

// Calls `action` for each piece that the layout has, with the width before it. Answers the whole width.
template <class Do>
double TextSetter::forEachPiece(const std::wstring& text, double tracking, Do&& action) {
    double before = 0.0;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = std::min(kLongestPiece, text.size() - at);
        const auto isHigh = [](wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
        if (length > 1 && at + length < text.size() && isHigh(text[at + length - 1]))
            --length;
        const std::wstring piece = text.substr(at, length);
        pango_layout_set_attributes(m_layout.get(), nullptr);
        double width = setPiece(piece);
        if (tracking != 1.0) {
            // The same for each letter: what the share of their widths is on average.
            const double more = width * (tracking - 1.0) / static_cast<double>(length);
            PangoAttrList* list = pango_attr_list_new();
            pango_attr_list_insert(list, pango_attr_letter_spacing_new(static_cast<int>(
                                             std::clamp(more, -2.0 * kEmSize, 2.0 * kEmSize) * PANGO_SCALE)));
            pango_layout_set_attributes(m_layout.get(), list);
            pango_attr_list_unref(list);
            width *= tracking;
        }
        action(before);
        before += width;
        at += length;
    }
    pango_layout_set_attributes(m_layout.get(), nullptr);
    return before;
}

TextSetter::Kept& TextSetter::kept(const std::wstring& text, const TextSetting& setting) {
    const Key key(setting.font, setting.tracking, text);
    const auto known = m_kept.find(key);
    if (known != m_kept.end())
        return known->second;
    if (m_kept.size() >= kMostKept)
        m_kept.clear();
    const Font& chosen = font(setting.font);
    takeFont(chosen.face);
    Kept& made = m_kept[key];
    made.width = forEachPiece(text, setting.tracking, [](double) {}) / chosen.capitalHeight;
    return made;
}

// Adds what the layout has to an outline.
void TextSetter::addPiece(double before, double scale, GlyphOutline& outline) {
    cairo_new_path(m_paths);
    cairo_move_to(m_paths, 0.0, 0.0);
    pango_cairo_layout_line_path(m_paths, pango_layout_get_line_readonly(m_layout.get(), 0));
    cairo_path_t* path = cairo_copy_path(m_paths);
    using Step = GlyphOutline::Step;
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        const cairo_path_data_t* data = path->data + i;
        const cairo_path_data_type_t type = data->header.type;
        outline.steps.push_back(type == CAIRO_PATH_MOVE_TO    ? Step::kMove
                                : type == CAIRO_PATH_LINE_TO  ? Step::kLine
                                : type == CAIRO_PATH_CURVE_TO ? Step::kCurve
                                                              : Step::kClose);
        for (int p = 1; type != CAIRO_PATH_CLOSE_PATH && p < data->header.length; ++p)
            outline.points.push_back({(before + data[p].point.x) * scale, -data[p].point.y * scale});
    }
    cairo_path_destroy(path);
    cairo_new_path(m_paths);
}

std::shared_ptr<const GlyphOutline> TextSetter::outline(const std::wstring& text,
                                                        const TextSetting& setting) {
    Kept& entry = kept(text, setting);
    if (entry.outline == nullptr) {
        const Font& chosen = font(setting.font);
        takeFont(chosen.face);
        auto made = std::make_shared<GlyphOutline>();
        made->width = entry.width;
        forEachPiece(text, setting.tracking,
                     [&](double before) { addPiece(before, 1.0 / chosen.capitalHeight, *made); });
        entry.outline = std::move(made);
    }
    return entry.outline;
}

TextSetter& textSetter() {
    static TextSetter setter;
    return setter;
}

// Styles come from drawings, and those have any number.
TextSetting sound(const TextSetting& setting) {
    return {setting.font, std::isfinite(setting.tracking) ? setting.tracking : 1.0};
}

} // namespace

double glyphWidth(const std::wstring& text, const TextSetting& setting) {
    return text.empty() ? 0.0 : textSetter().width(text, sound(setting));
}

std::shared_ptr<const GlyphOutline> glyphOutline(const std::wstring& text, const TextSetting& setting) {
    return textSetter().outline(text, sound(setting));
}

} // namespace embedded
