// records copy and records sync between two drawings.

#include "cli/cli_test.h"

namespace tests {

namespace {

class TransferTest : public CliTest {
protected:
    void SetUp() override {
        source = drawingWithStore("source.dwg");
        target = drawingWithStore("target.dwg");
    }

    void put(const std::string& drawing, const std::string& key, const std::vector<std::string>& records) {
        Words words = {"records", "put", drawing, key};
        for (const std::string& hex : records)
            words.insert(words.end(), {"--hex", hex});
        done(words);
    }

    /// Keys of the store and the bytes of all their records.
    std::map<std::string, std::vector<std::string>> content(const std::string& drawing) {
        std::map<std::string, std::vector<std::string>> content;
        const auto listing = json({"records", "list", drawing});
        for (const auto& key : listing["keys"]) {
            const std::string name =
                std::to_string(key["kwh"].get<int>()) + "/" + std::to_string(key["kwl"].get<int>());
            for (std::size_t i = 0; i < key["records"].get<std::size_t>(); ++i)
                content[name].push_back(
                    json({"records", "get", drawing, name, "--position", std::to_string(i)})["hex"]);
        }
        return content;
    }

    using Content = std::map<std::string, std::vector<std::string>>;

    static std::vector<int> kwls(const nlohmann::ordered_json& keys) {
        std::vector<int> numbers;
        for (const auto& key : keys)
            numbers.push_back(key["kwl"]);
        return numbers;
    }

    std::string source, target;
};

} // namespace

TEST_F(TransferTest, CopyOfAKeyTakesItsWholeSequence) {
    put(source, "10/0", {"01", "0202", "030303"});
    put(target, "10/0", {"ff", "ff", "ff", "ff"});
    put(target, "10/5", {"05"});
    const auto told = json({"records", "copy", source, target, "10/0"});
    EXPECT_EQ(content(target), (Content{{"10/0", {"01", "0202", "030303"}}, {"10/5", {"05"}}}));
    EXPECT_EQ(told["copied"], nlohmann::ordered_json::parse(R"([{"kwh":10,"kwl":0,"records":3,"bytes":6}])"));
    EXPECT_EQ(told["deleted"].size(), 0U);
}

TEST_F(TransferTest, CopyOfAGroupLeavesWhatElseTheTargetHolds) {
    put(source, "10/1", {"01"});
    put(source, "10/2", {"02"});
    put(source, "11/1", {"11"});
    put(target, "10/3", {"03"});
    EXPECT_EQ(kwls(json({"records", "copy", source, target, "10"})["copied"]), (std::vector<int>{1, 2}));
    EXPECT_EQ(content(target), (Content{{"10/1", {"01"}}, {"10/2", {"02"}}, {"10/3", {"03"}}}));
}

TEST_F(TransferTest, CopyOfARangeIsClosed) {
    for (const char* kwl : {"4", "5", "7", "9", "10"})
        put(source, std::string("10/") + kwl, {"01"});
    EXPECT_EQ(kwls(json({"records", "copy", source, target, "10", "--range", "5:9"})["copied"]),
              (std::vector<int>{5, 7, 9}));
}

TEST_F(TransferTest, CopyOfTheHeaderLeavesOneRecord) {
    put(source, "10/0", {"01", "02", "03"});
    put(target, "10/0", {"aa", "bb"});
    done({"records", "copy", source, target, "10/0", "--header"});
    EXPECT_EQ(content(target), (Content{{"10/0", {"01"}}}));
}

TEST_F(TransferTest, CopyOfTheHeadersOfAGroupOrRange) {
    put(source, "10/0", {"01", "02"});
    put(source, "10/1", {"11", "12"});
    put(source, "10/2", {"21", "22"});
    done({"records", "copy", source, target, "10", "--header", "--range", "1:9"});
    EXPECT_EQ(content(target), (Content{{"10/1", {"11"}}, {"10/2", {"21"}}}));
    done({"records", "copy", source, target, "10", "--header"});
    EXPECT_EQ(content(target), (Content{{"10/0", {"01"}}, {"10/1", {"11"}}, {"10/2", {"21"}}}));
}

TEST_F(TransferTest, CopyOfWhatTheSourceLacksFailsAndLeavesTheTarget) {
    put(target, "10/0", {"01"});
    const std::string before = readWholeFile(target);
    expectFailure(taldork({"records", "copy", source, target, "10/0"}), source);
    expectFailure(taldork({"records", "copy", source, target, "10"}), source);
    EXPECT_TRUE(readWholeFile(target) == before);
}

TEST_F(TransferTest, SyncMakesTheGroupEqual) {
    put(source, "10/1", {"01"});
    put(source, "10/2", {"02", "0202"});
    put(target, "10/2", {"ff"});
    put(target, "10/3", {"03"});
    put(target, "11/0", {"11"});
    const auto told = json({"records", "sync", source, target, "10"});
    EXPECT_EQ(content(target), (Content{{"10/1", {"01"}}, {"10/2", {"02", "0202"}}, {"11/0", {"11"}}}));
    EXPECT_EQ(kwls(told["copied"]), (std::vector<int>{1, 2}));
    EXPECT_EQ(kwls(told["deleted"]), (std::vector<int>{3}));
    EXPECT_EQ(told["groupDeleted"], false);
}

TEST_F(TransferTest, SyncDropsTheWholeGroupWhenNoneOfItsKeysSurvives) {
    put(source, "10/1", {"01"});
    put(target, "10/2", {"02"});
    put(target, "10/3", {"03"});
    const auto told = json({"records", "sync", source, target, "10"});
    EXPECT_EQ(content(target), (Content{{"10/1", {"01"}}}));
    EXPECT_EQ(kwls(told["deleted"]), (std::vector<int>{2, 3}));
    EXPECT_EQ(told["groupDeleted"], true);
}

TEST_F(TransferTest, SyncWithARangeLeavesWhatLiesOutside) {
    put(source, "10/7", {"07"});
    put(source, "10/30", {"30"});
    put(target, "10/5", {"05"});
    put(target, "10/15", {"15"});
    const auto told = json({"records", "sync", source, target, "10", "--range", "6:20"});
    EXPECT_EQ(content(target), (Content{{"10/5", {"05"}}, {"10/7", {"07"}}}));
    EXPECT_EQ(kwls(told["deleted"]), (std::vector<int>{15}));
}

TEST_F(TransferTest, SyncOfHeaders) {
    put(source, "10/1", {"01", "02"});
    put(source, "10/2", {"21", "22"});
    put(target, "10/3", {"03"});
    done({"records", "sync", source, target, "10", "--header", "--range", "2:9"});
    EXPECT_EQ(content(target), (Content{{"10/2", {"21"}}}));
    done({"records", "sync", source, target, "10", "--header"});
    EXPECT_EQ(content(target), (Content{{"10/1", {"01"}}, {"10/2", {"21"}}}));
}

TEST_F(TransferTest, SyncThatHasNothingToDoLeavesTheFile) {
    const std::string before = readWholeFile(target);
    EXPECT_EQ(done({"records", "sync", source, target, "10"}),
              "store ASDWG: 0 keys copied, 0 keys deleted\n");
    EXPECT_TRUE(readWholeFile(target) == before);
}

TEST_F(TransferTest, TheSourceIsOnlyRead) {
    put(source, "10/1", {"01"});
    const std::string before = readWholeFile(source);
    done({"records", "copy", source, target, "10"});
    done({"records", "sync", source, target, "10"});
    EXPECT_TRUE(readWholeFile(source) == before);
}

TEST_F(TransferTest, PeopleAreToldWhatWasCopiedAndDeleted) {
    put(source, "10/1", {"01", "0202"});
    put(source, "10/2", {"02"});
    put(target, "10/2", {"02"});
    put(target, "10/3", {"03"});
    EXPECT_EQ(done({"records", "sync", source, target, "10"}), "deleted 10/3\n"
                                                               "copied  10/1        2 records, 3 bytes\n"
                                                               "copied  10/2        1 record, 1 byte\n"
                                                               "store ASDWG: 2 keys copied, 1 key deleted\n");
}

TEST_F(TransferTest, TwoStoresOfOneDrawingAreSyncedInPlace) {
    done({"store", "create", source, "OTHER"});
    put(source, "10/1", {"01"});
    done({"records", "sync", source, source, "10", "--to-store", "OTHER"});
    EXPECT_EQ(json({"records", "list", source, "--store", "OTHER"})["keys"].size(), 1U);
    expectFailure(taldork({"records", "sync", source, source, "10"}), source);
}

TEST_F(TransferTest, AMissingStoreOnEitherSideIsToldInOneLine) {
    done({"new", file("bare.dwg")});
    put(source, "10/1", {"01"});
    expectFailure(taldork({"records", "copy", source, file("bare.dwg"), "10"}), file("bare.dwg"));
    expectFailure(taldork({"records", "copy", file("bare.dwg"), source, "10"}), file("bare.dwg"));
}

} // namespace tests
