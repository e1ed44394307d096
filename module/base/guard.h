#pragma once

#include "base/exceptions.h"
#include "base/export.h"

// Guards around everything that the host or a plugin can call. Each stands behind a `try` block, in place of
// its handlers, so that the line it reports is the one where the block ends:
//
//     try { plugin->onErase(erasing); }
//     ORV_GUARD

namespace orv::detail {

// Print one line on orvBeep.
TALDORK_API void printCaught(const char* what, const wchar_t* path, int line);
TALDORK_API void printCaught(const wchar_t* what, const wchar_t* path, int line);
TALDORK_API void printUnhandled(const wchar_t* path, int line);
TALDORK_API void printCriticalFilingError();

} // namespace orv::detail

#define ORV_WIDE_FILE L"" __FILE__

// Catches whatever comes and prints it; the code goes on behind the guard.
#define ORV_GUARD                                                                                            \
    catch (::orv::ExceptionButNoOutput&) {                                                                   \
    }                                                                                                        \
    catch (::orv::Exception & caught) {                                                                      \
        ::orv::detail::printCaught(caught.what(), ORV_WIDE_FILE, __LINE__);                                  \
    }                                                                                                        \
    catch (::std::exception & caught) {                                                                      \
        ::orv::detail::printCaught(caught.what(), ORV_WIDE_FILE, __LINE__);                                  \
    }                                                                                                        \
    catch (wchar_t * caught) {                                                                               \
        ::orv::detail::printCaught(caught, ORV_WIDE_FILE, __LINE__);                                         \
    }                                                                                                        \
    catch (...) {                                                                                            \
        ::orv::detail::printUnhandled(ORV_WIDE_FILE, __LINE__);                                              \
    }

// Catches whatever comes out of a filing function's body and returns `result`. The first time in the life of
// the process, counted for each function by itself, the user is told to save the drawing elsewhere.
#define ORV_CRITICAL_GUARD(result)                                                                           \
    catch (...) {                                                                                            \
        static bool s_told = false;                                                                          \
        if (!s_told) {                                                                                       \
            s_told = true;                                                                                   \
            ::orv::detail::printCriticalFilingError();                                                       \
        }                                                                                                    \
        return result;                                                                                       \
    }
