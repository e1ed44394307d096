#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tests {

/// What a program left behind.
struct ProgramRun {
    int code = -1; ///< exit code; 128 and the signal's number for one that was killed
    std::string out;
    std::string err;
};

/// Runs a program through the shell, with its output in files and nothing on its input, and waits for its
/// end.
/// @param scratch an existing folder for the output files
ProgramRun runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& environment,
                      const std::filesystem::path& scratch);

/// Runs a line of the shell in the same way.
ProgramRun runShell(const std::string& line, const std::filesystem::path& scratch);

/// A word of a shell line that stands for exactly this text.
std::string shellQuote(const std::string& text);

/// The program of that name on the PATH, or an empty path.
std::filesystem::path findOnPath(const std::string& name);

/// A whole file; empty for one that is not there.
std::string readWholeFile(const std::filesystem::path& path);
void writeWholeFile(const std::filesystem::path& path, const std::string& content);

/// A fresh folder below the system's temporary one, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace tests
