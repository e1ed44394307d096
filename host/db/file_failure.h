#pragma once

#include <string>

namespace embedded {

// Remembers why the last reading or saving of a drawing failed, as one line without the file's name in front
// of it twice: "FILE: where and what". Empty text forgets.
void noteFileFailure(std::string line);

} // namespace embedded
