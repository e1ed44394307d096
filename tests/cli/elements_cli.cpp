#include "cli/elements_cli.h"

#include <sstream>

namespace tests {

namespace fs = std::filesystem;

std::string ElementsCliTest::frameDrawing(const std::string& name) {
    done({"new", file(name)});
    done({"example", file(name), "--no-loads"});
    return file(name);
}

std::string ElementsCliTest::oddDrawing(const std::string& name) {
    const ProgramRun run = runProgram(fs::path(TALDORK_BIN) / "write_elements", {file(name)},
                                      {{TALDORK_REGISTRY_VARIABLE, file("registry.sqlite")}}, folder.path());
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    return file(name);
}

std::string ElementsCliTest::loadedDrawing(bool isBound, const std::string& name) {
    Words words = {file(name)};
    if (!isBound)
        words.push_back("loose");
    const ProgramRun run = runProgram(fs::path(TALDORK_BIN) / "write_loaded", words,
                                      {{TALDORK_REGISTRY_VARIABLE, file("registry.sqlite")}}, folder.path());
    EXPECT_EQ(run.code, 0) << run.out << run.err;
    return file(name);
}

std::string ElementsCliTest::told(const Words& arguments) {
    const ProgramRun run = taldork(arguments);
    EXPECT_EQ(run.code, 0) << run.err;
    std::istringstream lines(run.err);
    for (std::string line; std::getline(lines, line);)
        EXPECT_EQ(line, "Warning: Plugin type not registered: test.away.1!");
    return run.out;
}

ElementsCliTest::Json ElementsCliTest::toldJson(const Words& arguments) {
    Words words = arguments;
    words.push_back("--json");
    return Json::parse(told(words));
}

ElementsCliTest::Json ElementsCliTest::rows(const std::string& drawing, const Words& more) {
    Words words = {"elements", "list", drawing, "--json"};
    words.insert(words.end(), more.begin(), more.end());
    return Json::parse(told(words))["elements"];
}

ElementsCliTest::Words ElementsCliTest::handles(const Json& rows) {
    Words handles;
    for (const Json& row : rows)
        handles.push_back(row["handle"]);
    return handles;
}

std::string ElementsCliTest::named(const std::string& drawing, const std::string& name) {
    for (const Json& row : rows(drawing))
        if (row["name"] == name)
            return row["handle"];
    ADD_FAILURE() << "no element " << name;
    return "0";
}

ProgramRun ElementsCliTest::edit(const std::string& drawing, const std::string& script,
                                 const std::string& options) {
    writeWholeFile(file("script"), script);
    return runShell(std::string(TALDORK_REGISTRY_VARIABLE) + "=" + shellQuote(file("registry.sqlite")) + " " +
                        shellQuote(program.string()) + " elements edit " + shellQuote(drawing) + " " +
                        options + " < " + shellQuote(file("script")),
                    folder.path());
}

void ElementsCliTest::takeExampleAway() {
    fs::create_directory(folder.path() / "bin");
    for (const auto& entry : fs::directory_iterator(TALDORK_BIN)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind("taldork", 0) == 0 || name.rfind("lib", 0) == 0)
            fs::copy_file(entry.path(), folder.path() / "bin" / name);
    }
    fs::remove(file("registry.sqlite"));
    program = folder.path() / "bin" / "taldork";
}

} // namespace tests
