#pragma once

#include "cli/cli_test.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace tests {

/// Bytes of a record, value by value, the little end first.
class RecordBytes {
public:
    template <class Value>
    RecordBytes& add(Value value) {
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        return *this;
    }
    RecordBytes& zeros(std::size_t count) {
        m_bytes.append(count, '\0');
        return *this;
    }
    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

/// A record 10/0 with store axes of this length and an empty box at the origin.
inline std::string systemRecord(std::int32_t iprob, std::int32_t iachs, float length = 1.0F) {
    RecordBytes record;
    for (const std::int32_t value : {iprob, iachs, 7, 9, 10000, 0})
        record.add(value);
    record.zeros(24 + 12); // box, origin
    for (int axis = 0; axis < 3; ++axis)
        for (int i = 0; i < 3; ++i)
            record.add(axis == i ? length : 0.0F);
    return record.zeros(256).bytes();
}

/// A record 10/102.
inline std::string unitRecord(std::int32_t version, std::int32_t unit, double scale) {
    return RecordBytes().add(version).add(unit).add(scale).bytes();
}

/// The program's work on systems, and on records that an analysis program, or damage, has left.
class SystemsCliTest : public CliTest {
protected:
    /// A store, made unless it is there, gets a record of these bytes. The drawing may be damaged already.
    void put(const std::string& drawing, const std::string& store, const std::string& key,
             const std::string& bytes) {
        EXPECT_EQ(taldork({"store", "create", drawing, store}).code, 0);
        writeWholeFile(file("record"), bytes);
        const ProgramRun run =
            taldork({"records", "put", drawing, key, "--file", file("record"), "--store", store});
        EXPECT_EQ(run.code, 0) << run.err;
    }

    std::string record(const std::string& drawing, const std::string& store, const std::string& key) {
        const ProgramRun run = taldork({"records", "get", drawing, key, "--store", store, "-o", "-"});
        EXPECT_EQ(run.code, 0) << run.err;
        return run.out;
    }

    /// A new drawing with a system in space in metres.
    std::string drawingWithSystem(const Words& more = {}) {
        const std::string drawing = file("drawing.dwg");
        done({"new", drawing});
        create(drawing, "ASDWG", more);
        return drawing;
    }

    void create(const std::string& drawing, const std::string& store, const Words& more = {}) {
        Words words = {"systems", "create", drawing, store};
        if (more.empty())
            words.insert(words.end(), {"--kind", "space", "--gravity", "-z", "--unit", "m"});
        words.insert(words.end(), more.begin(), more.end());
        done(words);
    }

    /// The entry of a system in the listing of a drawing that reads without complaint.
    nlohmann::ordered_json system(const std::string& drawing, const std::string& store = "ASDWG",
                                  bool all = false) {
        const auto listed =
            json(all ? Words{"systems", "list", drawing, "--all"} : Words{"systems", "list", drawing});
        EXPECT_EQ(listed["complaints"], 0);
        for (const auto& entry : listed["systems"])
            if (entry["name"] == store)
                return entry;
        ADD_FAILURE() << "no store " << store << " in " << listed.dump(1);
        return {};
    }

    /// The lines of `systems check`; expects a failure that counts them.
    std::vector<std::string> complaints(const std::string& drawing);
};

} // namespace tests
