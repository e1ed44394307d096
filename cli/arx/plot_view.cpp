#include "cli/arx/plot_view.h"

#include "cli/common/numbers.h"

#include "embedded/plot.h"

namespace taldork::cli {

namespace {

using embedded::StandardView;

const struct {
    const char* name;
    StandardView view;
} viewRows[] = {
    {"top", StandardView::kTop},          {"bottom", StandardView::kBottom},
    {"front", StandardView::kFront},      {"back", StandardView::kBack},
    {"left", StandardView::kLeft},        {"right", StandardView::kRight},
    {"side", StandardView::kRight},       {"iso", StandardView::kSouthWest},
    {"iso-sw", StandardView::kSouthWest}, {"iso-se", StandardView::kSouthEast},
    {"iso-ne", StandardView::kNorthEast}, {"iso-nw", StandardView::kNorthWest},
};

constexpr int mostPixels = 30000;

bool findDirection(const std::string& text, AcGeVector3d& direction) {
    for (const auto& row : viewRows)
        if (text == row.name) {
            direction = embedded::directionOf(row.view);
            return true;
        }
    const auto numbers = parsePoint(text);
    if (!numbers)
        return false;
    direction.set((*numbers)[0], (*numbers)[1], (*numbers)[2]);
    return !direction.isZeroLength();
}

} // namespace

AcGeVector3d viewDirection(const std::string& view) {
    AcGeVector3d direction = AcGeVector3d::kZAxis;
    findDirection(view, direction);
    return direction;
}

std::pair<int, int> parsedSize(const std::string& size) {
    const std::size_t cross = size.find('x');
    if (cross == std::string::npos)
        return {0, 0};
    const auto wide = parseIndex(size.substr(0, cross), mostPixels);
    const auto high = parseIndex(size.substr(cross + 1), mostPixels);
    return {wide.value_or(0), high.value_or(0)};
}

std::string checkView(const std::string& text) {
    AcGeVector3d direction;
    return findDirection(text, direction) ? std::string() : "'" + text + "' is no view";
}

std::string checkSize(const std::string& text) {
    const auto [wide, high] = parsedSize(text);
    return wide > 0 && high > 0 ? std::string()
                                : "'" + text + "' is no size as in 800x600, 30000 pixels at most";
}

} // namespace taldork::cli
