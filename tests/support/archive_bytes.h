#pragma once

#include "dbx/binary_out_archive.h"

#include <cstdio>
#include <string>
#include <vector>

namespace testing_support {

// The block of an archive: what its owner files.
inline std::vector<unsigned char> blockOf(const orv::serialization::BinaryOutArchive& archive) {
    const unsigned char* const bytes = archive.buffer().data();
    return {bytes, bytes + archive.offset()};
}

// "01 ff 20"
inline std::string hexOf(const std::vector<unsigned char>& bytes) {
    std::string text;
    for (unsigned char byte : bytes) {
        char hex[4];
        std::snprintf(hex, sizeof hex, text.empty() ? "%02x" : " %02x", byte);
        text += hex;
    }
    return text;
}
inline std::string hexOf(const orv::serialization::BinaryOutArchive& archive) {
    return hexOf(blockOf(archive));
}

inline std::vector<unsigned char> fromHex(const std::string& text) {
    std::vector<unsigned char> bytes;
    for (std::size_t at = 0; at < text.size(); at += 3)
        bytes.push_back(static_cast<unsigned char>(std::stoi(text.substr(at, 2), nullptr, 16)));
    return bytes;
}

} // namespace testing_support
