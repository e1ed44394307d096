#include "cli/systems_cli.h"

#include <sstream>

namespace tests {

std::vector<std::string> SystemsCliTest::complaints(const std::string& drawing) {
    const ProgramRun run = taldork({"systems", "check", drawing});
    std::vector<std::string> lines;
    std::istringstream out(run.out);
    for (std::string line; std::getline(out, line);)
        lines.push_back(line);
    expectFailure(run, drawing);
    const std::string count =
        std::to_string(lines.size()) + (lines.size() == 1 ? " complaint\n" : " complaints\n");
    EXPECT_NE(run.err.find(": " + count), std::string::npos) << run.err;
    return lines;
}

} // namespace tests
