#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// How values look as text.
namespace embedded::text {

// Pure ASCII on one line: a control character is "^" and the letter that is 64 above it, "^" itself "^ ",
// what is not ASCII "\U+" and the four hexadecimal digits of its 16-bit unit, and so is a backslash that
// would be taken for the begin of one.
std::string encodeText(std::wstring_view text);
// The text of encodeText, and of others: bytes above ASCII are UTF-8. Never fails; what is no escape stands
// for itself.
std::wstring decodeText(std::string_view line);

// With a point or an exponent, so that nobody takes it for an integer. `digits` significant ones, or, if
// negative, as few as give the value back.
std::string realText(double value, int digits);

// The whole of a text, blanks around it aside. False if it is something else, or more than the type holds.
bool parseReal(std::string_view text, double& value);
bool parseInteger(std::string_view text, std::int64_t& value);
// Up to 16 hexadecimal digits.
bool parseHandle(std::string_view text, std::uint64_t& value);
std::string handleText(std::uint64_t value);

// Two capital hexadecimal digits a byte.
std::string hexText(std::string_view bytes);
bool parseHex(std::string_view text, std::string& bytes);

} // namespace embedded::text
