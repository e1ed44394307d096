#pragma once

#include "base/export.h"
#include "platform/registry_key.h"

#include <cstdint>
#include <string>

namespace orv {

// The user's registry as its own calls have it. Failures are told on std::wcerr.
struct TALDORK_API registry {
    using Root = platform::registry::KeyHandle;

    // What an iterator stands at.
    enum Kind : std::uint32_t {
        kBinary = 1,          // a value of type 3
        kNumber = 2,          // a value of type 4
        kText = 4,            // a value of type 1
        kExpandableText = 8,  // a value of type 2
        kSubKey = 16,         // a key below
        kNothing = 0x10000000 // a value of any other type; no entry at all
    };

    // Makes the key `path` below `root` if it is missing, and sets one of its values to `size` bytes of
    // `data`, as they are: who wants a text's terminator stored counts it in. `extraAccess` is added to the
    // access that the key is opened with. False after a failure, with one line on std::wcerr.
    static bool set(Root root, const std::wstring& path, const std::wstring& name, std::uint32_t type,
                    const void* data, std::uint32_t size, std::uint32_t extraAccess = 0);

    // Walks the values of one key and then the keys directly below it. Entries that come or go meanwhile may
    // or may not be met.
    class TALDORK_API iterator {
    public:
        // Stands at the first entry; at the end for a key that is missing or empty.
        iterator(Root root, const std::wstring& path, std::uint32_t extraAccess = 0);
        // Closes the key.
        ~iterator();
        iterator(const iterator&) = delete;
        iterator& operator=(const iterator&) = delete;

        // One step; nothing at the end. A failure ends the walk, with one line on std::wcerr.
        void next();
        // Ends the walk before its time.
        void close();

        bool atEnd() const { return m_end; }
        // Of the present entry; empty and kNothing at the end.
        const std::wstring& name() const { return m_name; }
        std::uint32_t kind() const { return m_kind; }
        // Bytes of the present value, as they are stored. Of a sub-key: no meaning.
        std::uint32_t dataSize() const { return m_dataSize; }

        // Keeps a value's data, which the caller has read, until the next step or the end; then an owned one
        // is deleted, as an array.
        void hold(unsigned char* data, bool owned);
        const unsigned char* held() const { return m_heldValue; }

    private:
        void release();
        // Takes what the system answered for a step.
        void stepDone(int status);

        bool m_end;
        platform::registry::KeyHandle m_key;
        Root m_root;
        std::wstring m_path;
        std::uint32_t m_extraAccess;
        bool m_inKeys;
        std::uint32_t m_index;
        std::wstring m_name;
        std::uint32_t m_kind;
        std::uint32_t m_dataSize;
        unsigned char* m_heldValue;
        bool m_ownsHeldValue;
    };
};

} // namespace orv
