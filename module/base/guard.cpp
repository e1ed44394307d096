#include "base/guard.h"

#include "orvcore/co_stream.h"

namespace orv::detail {

namespace {

// Printing happens inside a handler at the host's edge: a console that fails must not send out another
// exception.
template <class Print>
void printSafely(Print print) {
    try {
        print();
    } catch (...) {
    }
}

} // namespace

void printCaught(const char* what, const wchar_t* path, int line) {
    printSafely([&] { orvBeep << L"Caught Exception: " << what << L" " << path << L"@" << line << endl; });
}

void printCaught(const wchar_t* what, const wchar_t* path, int line) {
    printSafely(
        [&] { orvBeep << L"Caught Exception (tchar): " << what << L" " << path << L"@" << line << endl; });
}

void printUnhandled(const wchar_t* path, int line) {
    printSafely([&] { orvBeep << L"Unhandled Exception: " << path << L"@" << line << endl; });
}

void printCriticalFilingError() {
    // The two characters before "ffnen" are the two bytes of an umlaut that was once stored wrongly. The text
    // is known to users and to support in this form, so it stays.
    printSafely([] {
        orvBeep << L"Kritischer Fehler in Vandril, speichern Sie die Zeichnung unter anderem Namen, "
                   L"starten Sie Vandril neu und \u00C3\u00B6ffnen Sie die Datei mit 'Wiederherstellen'."
                << endl;
    });
}

} // namespace orv::detail
