#pragma once

#include "orvshape/colour_rgba.h"
#include "orvshape/export.h"

#include <boost/function.hpp>

#include <cstdint>

namespace orv::settings {

// Marks a size that no factor touches.
constexpr std::uint32_t kFixedSize = 2;

// A size as it was set. Bits of the flags other than kFixedSize have no meaning here, and are kept.
struct size {
    std::uint32_t flags = 0;
    double value = 1.0;
};

// The numbered drawing settings of one structural system: colours, sizes, switches. What a number stands for
// is the matter of who draws.
//
// Sizes are kept as they were set, and seen by the graphics after scaling: getSize answers value * factor,
// the factor being that of the last scaleBy, and the bare value for a size with the flag kFixedSize. Each
// call of scaleBy starts from the values as they were set, so factors do not add up. Before the first call
// the factor is 1.
//
// An index that is not inside its table is reported ("index >= 0 && index < count"), changes nothing and is
// answered with what a fresh object holds: white, size 1.0 without flags, a switch that is off.
class ORVSHAPE_API Settings {
public:
    // Fills an object: gets it, its version, and whether everything is to be set or only what versions above
    // the given one have added.
    using Defaults = boost::function<void(Settings&, int version, bool full)>;

    // All white, sizes 1.0 without flags, switches off; then runs `defaults` on this very object, once, with
    // the two arguments. The exception of an empty function, and what `defaults` throws, pass out.
    Settings(const Defaults& defaults, int version, bool full);

    // As constructed; nothing changes it.
    int getVersion() const { return m_version; }

    int numColours() const { return kCount; }
    int numSizes() const { return kCount; }
    int numSwitches() const { return kCount; }

    ColourRGBA getColour(int index) const;
    void setColour(int index, const ColourRGBA& colour);

    // As it was set.
    size getRawSize(int index) const;
    // As the graphics see it.
    double getSize(int index) const;
    void setSize(int index, const size& value);
    // The flags stay.
    void setSize(int index, double value);
    // The value stays; its scaling follows the new flags.
    void setSizeFlags(int index, std::uint32_t flags);
    void scaleBy(double factor);

    std::uint8_t getSwitch(int index) const;
    void setSwitch(int index, std::uint8_t value);
    // Both ends included; a first one above the last one sets nothing. With an end outside the table the
    // whole range is refused and reported like an index.
    void setSwitchRange(int first, int last, std::uint8_t value);
    int maxSwitchIndex() const { return kCount - 1; }
    // Any value but 0.
    bool isOn(int index) const { return getSwitch(index) != 0; }

private:
    static constexpr int kCount = 300;

    void scale(int index);

    std::int32_t m_version;
    ColourRGBA m_colours[kCount];
    size m_sizes[kCount];
    double m_scaledSizes[kCount];
    std::uint8_t m_switches[kCount] = {};
    double m_factor = 1.0;
};

} // namespace orv::settings
