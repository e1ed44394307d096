#include "cli/common/output.h"

#include "cli/common/failure.h"

#include "platform/files.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace taldork::cli {

namespace {

constexpr const char* standardOutput = "-";

/// The system's message names the file as well, which the failure's line does already.
Failure fileFailure(const std::string& path, const platform::FileResult& result) {
    std::string what = platform::toUtf8(result.message);
    const std::string prefix = path + ": ";
    if (what.rfind(prefix, 0) == 0)
        what.erase(0, prefix.size());
    return Failure(path, what);
}

/// A device or a pipe is written to; replacing it by a file would take it away.
bool isSpecial(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_other(std::filesystem::u8path(path), error);
}

} // namespace

void printJson(const nlohmann::ordered_json& document) {
    printText(document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n");
}

void printText(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        throw Failure("standard output", "cannot be written");
}

Bytes readFile(const std::string& path) {
    Bytes bytes;
    if (const auto result = platform::readFile(platform::fromUtf8(path), bytes); !result)
        throw fileFailure(path, result);
    return bytes;
}

void writeFile(const std::string& path, const Bytes& bytes) {
    if (path == standardOutput) {
        printText(std::string(bytes.begin(), bytes.end()));
    } else if (isSpecial(path)) {
        std::ofstream device(std::filesystem::u8path(path), std::ios::binary);
        device.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!device.flush())
            throw Failure(path, "cannot be written");
    } else if (const auto result =
                   platform::replaceFile(platform::fromUtf8(path), bytes.data(), bytes.size());
               !result) {
        throw fileFailure(path, result);
    }
}

} // namespace taldork::cli
