#include "orvshape/settings.h"

#include "orvcheck/smart_assert.h"

#include <string>

namespace orv::settings {

namespace {

bool isInside(int index, int count) {
    if (index >= 0 && index < count)
        return true;
    smartassert::SmartAssert("index >= 0 && index < count")
        .setFileContext(__FILE__, __LINE__)
        .printValue("index", std::to_string(index))
        .printValue("count", std::to_string(count));
    return false;
}

} // namespace

Settings::Settings(const Defaults& defaults, int version, bool full) : m_version(version) {
    scaleBy(m_factor);
    defaults(*this, version, full);
}

ColourRGBA Settings::getColour(int index) const {
    return isInside(index, kCount) ? m_colours[index] : ColourRGBA();
}

void Settings::setColour(int index, const ColourRGBA& colour) {
    if (isInside(index, kCount))
        m_colours[index] = colour;
}

size Settings::getRawSize(int index) const { return isInside(index, kCount) ? m_sizes[index] : size(); }

double Settings::getSize(int index) const {
    return isInside(index, kCount) ? m_scaledSizes[index] : size().value;
}

void Settings::setSize(int index, const size& value) {
    if (!isInside(index, kCount))
        return;
    m_sizes[index] = value;
    scale(index);
}

void Settings::setSize(int index, double value) {
    if (!isInside(index, kCount))
        return;
    m_sizes[index].value = value;
    scale(index);
}

void Settings::setSizeFlags(int index, std::uint32_t flags) {
    if (!isInside(index, kCount))
        return;
    m_sizes[index].flags = flags;
    scale(index);
}

void Settings::scaleBy(double factor) {
    m_factor = factor;
    for (int index = 0; index < kCount; ++index)
        scale(index);
}

// The one place where a raw size, its flags and the factor meet. Whatever changes one of the three calls it.
void Settings::scale(int index) {
    const size& raw = m_sizes[index];
    m_scaledSizes[index] = (raw.flags & kFixedSize) != 0 ? raw.value : raw.value * m_factor;
}

std::uint8_t Settings::getSwitch(int index) const {
    return isInside(index, kCount) ? m_switches[index] : std::uint8_t{0};
}

void Settings::setSwitch(int index, std::uint8_t value) {
    if (isInside(index, kCount))
        m_switches[index] = value;
}

void Settings::setSwitchRange(int first, int last, std::uint8_t value) {
    if (!isInside(first, kCount) || !isInside(last, kCount))
        return;
    for (int index = first; index <= last; ++index)
        m_switches[index] = value;
}

} // namespace orv::settings
