#include "embedded/guarded.h"

#include "acestext.h"
#include "embedded/console.h"
#include "platform/text.h"

#include <exception>

namespace embedded {

namespace {

constexpr const wchar_t* kUnknown = L"something that is no std::exception was thrown";

} // namespace

std::wstring describeCaught() {
    try {
        throw;
    } catch (const std::exception& failure) {
        return platform::fromUtf8(failure.what());
    } catch (Acad::ErrorStatus es) {
        const ACHAR* name = acadErrorStatusText(es);
        return name != nullptr ? name : L"status " + std::to_wstring(es);
    } catch (const wchar_t* text) {
        return text != nullptr ? text : kUnknown;
    } catch (const char* text) {
        return text != nullptr ? platform::fromUtf8(text) : kUnknown;
    } catch (...) {
        return kUnknown;
    }
}

void printCaught(const std::wstring& who) noexcept {
    try {
        writeToConsole(who + L": " + describeCaught() + L"\n");
    } catch (...) {
        // The console itself fails: there is nobody left to tell.
    }
}

} // namespace embedded
