#pragma once

#include "embedded/plot.h"
#include "plot/colour_table.h"
#include "plot/page_point.h"

#include <memory>

namespace embedded {

// One page of a picture, over Cairo. Lines are gathered and drawn together as long as the pen is the same,
// and so are areas: where two of them touch, no seam is left then.
class Canvas {
public:
    // `bytes` takes the file's bytes as they come and must outlive the canvas. The page must have been
    // checked.
    Canvas(PlotFormat format, const PlotPage& page, Rgb ground, std::vector<unsigned char>& bytes);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // What follows is a line of that width, in millimetres.
    void setPen(Rgb colour, double width);
    // What follows is an area. All areas have to go the same way around, whatever overlaps.
    void setBrush(Rgb colour);
    // What follows is an area by itself, until fill(): its outlines may go both ways.
    void setOwnBrush(Rgb colour);

    void move(PagePoint to);
    void line(PagePoint to);
    void curve(PagePoint first, PagePoint second, PagePoint to);
    void close();
    // Fills what came since setOwnBrush(): with `evenOdd` a path within a path is a hole, without it only one
    // that goes the other way.
    void fill(bool evenOdd);

    // Ends the picture. False, with the reason, if anything on the way has failed.
    bool finish(std::string& failure);

private:
    class Inside;

    enum class Use { kNothing, kLines, kAreas };

    void flush();
    bool isUsedFor(Use use, Rgb colour) const { return m_use == use && colour == m_colour; }

    std::unique_ptr<Inside> m_inside;
    Rgb m_colour;
    double m_width = 0.0;
    Use m_use = Use::kNothing;
    std::size_t m_gathered = 0;
};

} // namespace embedded
