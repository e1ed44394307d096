#pragma once

#include "cli/cli_test.h"

#include <string>
#include <vector>

namespace tests {

/// The program's work on elements: those of the example front end, whose modules stand beside the program.
class ElementsCliTest : public CliTest {
protected:
    using Json = nlohmann::ordered_json;

    /// A new drawing with the example's frame, which has no loads.
    std::string frameDrawing(const std::string& name = "frame.dwg");
    /// The drawing of write_elements.cpp: nodes with handles in the order second, third, fourth, first.
    /// Whoever opens the first one is told of its plugin.
    std::string oddDrawing(const std::string& name = "odd.dwg");

    /// The drawing of write_loaded.cpp: a beam, and elements, with loads of their own; bound to a system, or
    /// to none.
    std::string loadedDrawing(bool isBound = true, const std::string& name = "loaded.dwg");

    /// As done and json, with nothing on standard error but the remark on that plugin.
    std::string told(const Words& arguments);
    Json toldJson(const Words& arguments);

    /// The rows of the listing.
    Json rows(const std::string& drawing, const Words& more = {});
    /// The handles of these rows, in order.
    static Words handles(const Json& rows);
    /// The handle of the element with this name.
    std::string named(const std::string& drawing, const std::string& name);

    /// `elements edit` with these lines on standard input.
    ProgramRun edit(const std::string& drawing, const std::string& script, const std::string& options = "");

    /// From now on the program stands in a folder without the example's modules, which no entry of the
    /// registry brings back.
    void takeExampleAway();
};

} // namespace tests
