#pragma once

#include "embedded/display_list.h"

#include <cstddef>
#include <string>
#include <vector>

// Pictures of display lists: SVG, PDF and PNG, in the order of the list, without hiding one thing behind
// another. Letters are drawn as outlines, so that a picture looks the same wherever it is opened.
namespace embedded {

enum class PlotFormat { kSvg, kPdf, kPng };

// By the ending of a file's name (.svg, .pdf, .png, in any case). False for any other.
bool plotFormatOf(const std::wstring& path, PlotFormat& format);

// The usual views. The last four are from above, at the same angle to all three axes, from that side.
enum class StandardView {
    kTop,
    kBottom,
    kFront,
    kBack,
    kLeft,
    kRight,
    kSouthWest,
    kSouthEast,
    kNorthEast,
    kNorthWest
};
// From the target to the viewer, of length 1. With it as ViewParameters::direction, Z is up in all but the
// first two.
AcGeVector3d directionOf(StandardView view);

// The sheet that is drawn on.
struct PlotPage {
    // Millimetres. A4 across.
    double width = 297.0;
    double height = 210.0;
    // What stays free on each side when a view is fitted.
    double margin = 5.0;
    // For PNG: how fine it is. 96 to the inch.
    double pixelsPerMillimetre = 96.0 / 25.4;

    // A page that is so many pixels.
    static PlotPage ofPixels(int wide, int high, double perMillimetre = 96.0 / 25.4);
    int pixelsWide() const;
    int pixelsHigh() const;
};

struct PlotStyle {
    // On a black ground instead of a white one. Colour 7 is black on white and white on black.
    bool isDark = false;
    // Millimetres, of lines with the default weight.
    double defaultLineWeight = 0.25;
    // By which all weights are multiplied.
    double lineWeightScale = 1.0;
    // Of all line types, besides that of each primitive; 0 for the drawing's own (LTSCALE). Patterns that
    // would be too dense to be told apart are drawn as a whole line.
    double lineTypeScale = 0.0;
};

// Takes out of a list what no picture shows: what is not plottable by itself or on a layer that is not to be
// plotted. The layers' records are opened for read. All operations below leave it out anyhow; this is for
// whoever wants to know what is on the picture.
void leaveOutNotPlotted(DisplayList& list);

// The box of what would be seen, in eye coordinates of a view with that direction, twist and target: X to the
// right, Y up. What has no end and what is nowhere (coordinates that are no numbers) does not count.
AcDbExtents eyeExtents(const DisplayList& list, const ViewParameters& view);

// The same view with target, height and pixels such that all of the list is on the page, inside of the
// margin, and in its middle. A list that shows nothing leaves target and height as they are. What depends on
// the size of the view itself has to be drawn again with it.
ViewParameters fittedView(const DisplayList& list, ViewParameters view, const PlotPage& page);

// Draws a list as the view sees it: the target in the middle of the page, ViewParameters::height from its
// lower to its upper edge. What is by layer is looked up in the layers' records, which are opened for read;
// without a database (null) it is colour 7, the default weight and a whole line. The list has nothing of
// layers that are not shown; what is on layers that are shown and not to be plotted is left out here.
// False, with the reason as one line, for a page without size or of too many pixels (30,000 in either
// direction, or 400 millions of them), and when memory or the library gives up; `bytes` is empty then.
bool plot(const DisplayList& list, AcDbDatabase* database, const ViewParameters& view, const PlotPage& page,
          const PlotStyle& style, PlotFormat format, std::vector<unsigned char>& bytes, std::string& failure);

// The same into a file, which is replaced in one step: after a failure there is what was there before. The
// format goes by the path's ending.
bool plotToFile(const DisplayList& list, AcDbDatabase* database, const ViewParameters& view,
                const PlotPage& page, const PlotStyle& style, const std::wstring& path, std::string& failure);

} // namespace embedded
