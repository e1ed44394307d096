#pragma once

#include "base/export.h"

#include <cstddef>
#include <string>

// Small named values that a store keeps beside its records, in the host's working database: under "KELMORAN",
// the store's name and "GENERAL". Writing makes what is missing on the way. An empty store name is reported;
// an empty name of either kind gives false with nothing done.
namespace orv::acad {

// Raw bytes. The write is false when something of another kind has the name. The read is false, with the
// buffer as it was, if there is no such value or it is shorter than `len`; of a longer one it takes the
// beginning.
TALDORK_API bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name, const void* data,
                                      std::size_t len);
TALDORK_API bool nod_readGeneralData(const std::wstring& dbName, const std::wstring& name, void* data,
                                     std::size_t len);

// A flag, in one byte. Statuses as above.
TALDORK_API bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name, bool value);
TALDORK_API bool nod_readGeneralData(const std::wstring& dbName, const std::wstring& name, bool& value);

// A text, in three values: name + ".version", ".size" and ".data". The write is true whatever the three
// writes said. The read is false with `value` as it was if there is no size; with a size but no such text it
// is reported, false, and `value` has the length of the size, or, for a size above 1048576, is as it was: no
// memory is taken for a text that is not there. A text of version 1 fills half of the value.
TALDORK_API bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name,
                                      const std::wstring& value);
TALDORK_API bool nod_readGeneralData(const std::wstring& dbName, const std::wstring& name,
                                     std::wstring& value);

// A literal would be taken for a flag.
bool nod_writeGeneralData(const std::wstring& dbName, const std::wstring& name,
                          const wchar_t* value) = delete;

} // namespace orv::acad
