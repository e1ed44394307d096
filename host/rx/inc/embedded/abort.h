#pragma once

#include <functional>
#include <string>

namespace embedded {

using AbortHandler = std::function<void(const std::wstring&)>;

// What acrx_abort calls. An empty function puts the default one back, which writes the text to standard error
// and aborts. A handler that comes back leads to the default one; a test's throws. Gives the handler that was
// there.
AbortHandler setAbortHandler(AbortHandler handler);

} // namespace embedded
