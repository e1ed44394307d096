#include "platform/terminal.h"

#include <io.h>
#include <stdio.h>

namespace platform {

bool isTerminal(Stream stream) {
    FILE* file = stream == Stream::kInput ? stdin : stream == Stream::kOutput ? stdout : stderr;
    return _isatty(_fileno(file)) != 0;
}

} // namespace platform
