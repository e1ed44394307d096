#include "support/program_run.h"

#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

namespace tests {

namespace fs = std::filesystem;

ProgramRun runShell(const std::string& line, const fs::path& scratch) {
    const fs::path out = scratch / "run.out", err = scratch / "run.err", code = scratch / "run.code";
    fs::remove(code);
    // The line goes into a file, since the system bounds the length of a single argument.
    const fs::path script = scratch / "run.sh";
    writeWholeFile(script, line + "\n");
    const std::string command = "sh " + shellQuote(script.string()) + " </dev/null >" +
                                shellQuote(out.string()) + " 2>" + shellQuote(err.string()) + "; echo $? >" +
                                shellQuote(code.string());
    ProgramRun run;
    if (std::system(command.c_str()) != 0)
        return run;
    std::istringstream(readWholeFile(code)) >> run.code;
    run.out = readWholeFile(out);
    run.err = readWholeFile(err);
    return run;
}

ProgramRun runProgram(const fs::path& program, const std::vector<std::string>& arguments,
                      const std::map<std::string, std::string>& environment, const fs::path& scratch) {
    std::string line;
    for (const auto& [name, value] : environment)
        line += name + "=" + shellQuote(value) + " ";
    line += shellQuote(program.string());
    for (const std::string& argument : arguments)
        line += " " + shellQuote(argument);
    return runShell(line, scratch);
}

std::string shellQuote(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

fs::path findOnPath(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::error_code error;
        if (fs::is_regular_file(fs::path(folder) / name, error))
            return fs::path(folder) / name;
    }
    return {};
}

std::string readWholeFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void writeWholeFile(const fs::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        m_path = fs::temp_directory_path() / ("taldork-test-" + std::to_string(random()));
    } while (!fs::create_directory(m_path));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(m_path, error);
}

} // namespace tests
