#pragma once

#include <string>

// The host calls code of applications in many places, and what that code lets out must not keep the host from
// finishing what it is about. Whatever is thrown counts: statuses and texts are as usual there as exceptions.
namespace embedded {

// What is just being caught says of itself: an exception its text, a status its name, a text itself. To be
// called in a catch block only.
std::wstring describeCaught();

// Prints "WHO: " and what is just being caught as a line on the console. To be called in a catch block only.
void printCaught(const std::wstring& who) noexcept;

// Calls somebody else's code. What it lets out is printed as "WHO: reason". True if nothing was.
template <class Call>
bool guarded(const wchar_t* who, Call&& call) {
    try {
        call();
        return true;
    } catch (...) {
        printCaught(who);
        return false;
    }
}

inline constexpr const wchar_t* kReactorFailed = L"A reactor failed";

} // namespace embedded
