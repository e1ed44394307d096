#include "cli/arx/commands.h"
#include "cli/arx/store.h"
#include "cli/common/output.h"
#include "cli/common/record_key.h"
#include "cli/common/terminal.h"

#include <nlohmann/json.hpp>

namespace taldork::cli {

namespace {

/// How many of a key's sizes are shown to people; JSON has all.
constexpr std::size_t shownSizes = 8;

using Sizes = std::vector<std::optional<std::size_t>>;

std::size_t totalOf(const Sizes& sizes) {
    std::size_t total = 0;
    for (const auto& size : sizes)
        total += size.value_or(0);
    return total;
}

std::string sizesText(const Sizes& sizes) {
    std::string text;
    for (std::size_t i = 0; i < sizes.size() && i < shownSizes; ++i)
        text += (i != 0 ? " " : "") + (sizes[i] ? std::to_string(*sizes[i]) : "?");
    return sizes.size() > shownSizes ? text + " …" : text;
}

class RecordsList : public Command {
public:
    CLI::App* describe(CLI::App& program) override {
        CLI::App* command = addSubcommand(
            program.get_subcommand("records"), "list", "Lists the keys of a store with their records",
            "Each key comes with the number of its records and their sizes in bytes, by ascending numbers.\n"
            "The size of a record that cannot be read, since its class is not loaded, is shown as ?.\n"
            "\n"
            "Example: taldork records list hall.dwg --kwh 10");
        addDrawing(*command, m_file);
        addStore(*command, m_store);
        command->add_option("--kwh", m_group, "Only this group")
            ->option_text("N")
            ->check(CLI::Validator(checkGroup, ""));
        addJson(*command, m_json);
        return command;
    }

    void run() override {
        const Drawing drawing = Drawing::open(m_file);
        Store store(drawing, m_store);
        std::set<int> groups = store.groups();
        if (!m_group.empty())
            groups = {parseRecordKey(m_group)->kwh};
        m_json ? printAsJson(store, groups) : printAsTable(store, groups);
    }

private:
    void printAsTable(Store& store, const std::set<int>& groups) {
        std::string text;
        std::size_t keyCount = 0, recordCount = 0, byteCount = 0;
        Progress progress("reading keys");
        for (const int kwh : groups) {
            for (const int kwl : store.keys(kwh)) {
                const Sizes sizes = recordSizes(store.cdb(), kwh, kwl);
                text += padRight(RecordKey{kwh, kwl}.text(), 12) + padLeft(std::to_string(sizes.size()), 8) +
                        padLeft(std::to_string(totalOf(sizes)), 12) + "  " + sizesText(sizes) + "\n";
                ++keyCount;
                recordCount += sizes.size();
                byteCount += totalOf(sizes);
                progress.step();
            }
        }
        if (keyCount != 0)
            text = padRight("key", 12) + padLeft("records", 8) + padLeft("bytes", 12) + "  sizes\n" + text;
        printText(text + "store " + store.name() + ": " + counted(keyCount, "key") + ", " +
                  counted(recordCount, "record") + ", " + counted(byteCount, "byte") + "\n");
    }

    void printAsJson(Store& store, const std::set<int>& groups) {
        auto keys = nlohmann::ordered_json::array();
        for (const int kwh : groups) {
            for (const int kwl : store.keys(kwh)) {
                const Sizes sizes = recordSizes(store.cdb(), kwh, kwl);
                auto listed = nlohmann::ordered_json::array();
                for (const auto& size : sizes)
                    listed.push_back(size ? nlohmann::ordered_json(*size) : nlohmann::ordered_json());
                keys.push_back({{"kwh", kwh},
                                {"kwl", kwl},
                                {"records", sizes.size()},
                                {"bytes", totalOf(sizes)},
                                {"sizes", std::move(listed)}});
            }
        }
        printJson({{"store", store.name()}, {"keys", std::move(keys)}});
    }

    std::string m_file, m_store, m_group;
    bool m_json = false;
};

} // namespace

std::unique_ptr<Command> makeRecordsList() { return std::make_unique<RecordsList>(); }

} // namespace taldork::cli
