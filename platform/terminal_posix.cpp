#include "platform/terminal.h"

#include <unistd.h>

namespace platform {

bool isTerminal(Stream stream) {
    switch (stream) {
    case Stream::kInput:
        return isatty(STDIN_FILENO) == 1;
    case Stream::kOutput:
        return isatty(STDOUT_FILENO) == 1;
    case Stream::kError:
        return isatty(STDERR_FILENO) == 1;
    }
    return false;
}

} // namespace platform
