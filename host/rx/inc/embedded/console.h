#pragma once

#include <functional>
#include <string>

namespace embedded {

using ConsoleSink = std::function<void(const std::wstring&)>;

// Where all text for the user goes, acutPrintf's among it. An empty function puts the default one back, which
// writes UTF-8 to standard output. Gives the sink that was there, empty for the default one.
ConsoleSink setConsoleSink(ConsoleSink sink);

// Hands the text to the sink as it is.
void writeToConsole(const std::wstring& text);

} // namespace embedded
