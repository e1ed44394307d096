// records list, get, put and del on one drawing, and the making of stores.

#include "cli/cli_test.h"

namespace tests {

namespace {

class RecordsTest : public CliTest {
protected:
    void put(const std::string& drawing, const std::string& key, const std::vector<std::string>& records,
             const Words& more = {}) {
        Words words = {"records", "put", drawing, key};
        for (const std::string& hex : records)
            words.insert(words.end(), {"--hex", hex});
        words.insert(words.end(), more.begin(), more.end());
        done(words);
    }

    std::string hexAt(const std::string& drawing, const std::string& key, int position) {
        return json({"records", "get", drawing, key, "--position", std::to_string(position)})["hex"];
    }

    /// The keys of a store with the sizes of their records.
    std::map<std::string, std::vector<std::size_t>> listing(const std::string& drawing,
                                                            const Words& more = {}) {
        Words words = {"records", "list", drawing};
        words.insert(words.end(), more.begin(), more.end());
        std::map<std::string, std::vector<std::size_t>> keys;
        const auto document = json(words);
        for (const auto& key : document["keys"]) {
            const std::string name =
                std::to_string(key["kwh"].get<int>()) + "/" + std::to_string(key["kwl"].get<int>());
            keys[name] = key["sizes"].get<std::vector<std::size_t>>();
            EXPECT_EQ(key["records"], keys[name].size());
        }
        return keys;
    }

    using Listing = std::map<std::string, std::vector<std::size_t>>;
};

} // namespace

TEST_F(RecordsTest, ANewStoreIsEmpty) { EXPECT_EQ(listing(drawingWithStore()), Listing()); }

TEST_F(RecordsTest, PutWritesFilesAndBytesInTheOrderOfTheCommandLine) {
    const std::string drawing = drawingWithStore();
    writeWholeFile(file("in"), "from a file");
    done({"records", "put", drawing, "10/0", "--hex", "aa", "--file", file("in"), "--hex", "BB:cc"});
    EXPECT_EQ(listing(drawing), (Listing{{"10/0", {1, 11, 2}}}));
    EXPECT_EQ(hexAt(drawing, "10/0", 0), "aa");
    EXPECT_EQ(hexAt(drawing, "10/0", 1), "66726f6d20612066696c65");
    EXPECT_EQ(hexAt(drawing, "10/0", 2), "bbcc");
}

TEST_F(RecordsTest, PutReplacesTheWholeSequence) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01", "02", "03"});
    put(drawing, "10/0", {"0405"});
    EXPECT_EQ(listing(drawing), (Listing{{"10/0", {2}}}));
    EXPECT_EQ(hexAt(drawing, "10/0", 0), "0405");
}

TEST_F(RecordsTest, AppendPutsRecordsBehindThoseThatAreThere) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01", "02"});
    put(drawing, "10/0", {"0303", "040404"}, {"--append"});
    EXPECT_EQ(listing(drawing), (Listing{{"10/0", {1, 1, 2, 3}}}));
    EXPECT_EQ(hexAt(drawing, "10/0", 1), "02");
    EXPECT_EQ(hexAt(drawing, "10/0", 3), "040404");
}

TEST_F(RecordsTest, AppendToAMissingKeyBeginsIt) {
    const std::string drawing = drawingWithStore();
    put(drawing, "7/9", {"01"}, {"--append"});
    EXPECT_EQ(listing(drawing), (Listing{{"7/9", {1}}}));
}

TEST_F(RecordsTest, RecordsOfAnyBytesAndSizesComeBackAsTheyWere) {
    const std::string drawing = drawingWithStore();
    std::string content;
    for (int i = 0; i < 70000; ++i)
        content += static_cast<char>(i * 37 + i / 256);
    int key = 0;
    for (const std::size_t size : {1U, 511U, 512U, 513U, 70000U}) {
        writeWholeFile(file("in"), content.substr(0, size));
        const std::string name = "10/" + std::to_string(key++);
        done({"records", "put", drawing, name, "--file", file("in")});
        EXPECT_EQ(done({"records", "get", drawing, name, "-o", file("out")}), "");
        EXPECT_TRUE(readWholeFile(file("out")) == content.substr(0, size)) << size;
    }
}

TEST_F(RecordsTest, GetPrintsAHexDump) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"48656c6c6f2c20776f726c642100ff7f41"});
    EXPECT_EQ(done({"records", "get", drawing, "10/0"}),
              "00000000  48 65 6c 6c 6f 2c 20 77 6f 72 6c 64 21 00 ff 7f  |Hello, world!...|\n"
              "00000010  41                                               |A|\n");
}

TEST_F(RecordsTest, GetWritesRawBytesToStandardOutputForADash) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"00ff0a"});
    EXPECT_EQ(done({"records", "get", drawing, "10/0", "-o", "-"}), std::string("\0\xff\n", 3));
}

TEST_F(RecordsTest, GetOfWhatIsNotThereFails) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01"});
    expectFailure(taldork({"records", "get", drawing, "10/1"}), drawing);
    expectFailure(taldork({"records", "get", drawing, "11/0"}), drawing);
    expectFailure(taldork({"records", "get", drawing, "10/0", "--position", "1"}), drawing);
    expectFailure(taldork({"records", "get", drawing, "10/0", "-o", file("no/such/folder")}),
                  file("no/such/folder"));
}

TEST_F(RecordsTest, DelTakesOneKey) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01"});
    put(drawing, "10/1", {"01", "02"});
    done({"records", "del", drawing, "10/1"});
    EXPECT_EQ(listing(drawing), (Listing{{"10/0", {1}}}));
}

TEST_F(RecordsTest, DelTakesAGroup) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01"});
    put(drawing, "10/1", {"01", "02"});
    put(drawing, "11/1", {"03"});
    EXPECT_NE(done({"records", "del", drawing, "10"}).find("2 keys"), std::string::npos);
    EXPECT_EQ(listing(drawing), (Listing{{"11/1", {1}}}));
}

TEST_F(RecordsTest, DelOfWhatIsNotThereFailsAndLeavesTheFile) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01"});
    const std::string before = readWholeFile(drawing);
    expectFailure(taldork({"records", "del", drawing, "10/1"}), drawing);
    expectFailure(taldork({"records", "del", drawing, "11"}), drawing);
    expectFailure(taldork({"records", "del", drawing, "11/0"}), drawing);
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(RecordsTest, ListShowsOneGroupWhenAsked) {
    const std::string drawing = drawingWithStore();
    put(drawing, "2/5", {"01"});
    put(drawing, "10/0", {"01"});
    EXPECT_EQ(listing(drawing, {"--kwh", "2"}), (Listing{{"2/5", {1}}}));
    EXPECT_EQ(listing(drawing, {"--kwh", "3"}), Listing());
}

TEST_F(RecordsTest, ListIsInTheOrderOfTheNumbers) {
    const std::string drawing = drawingWithStore();
    for (const char* key : {"10/2", "10/10", "9/1", "100/0", "10/1"})
        put(drawing, key, {"01"});
    std::vector<std::pair<int, int>> keys;
    const auto listed = json({"records", "list", drawing});
    for (const auto& key : listed["keys"])
        keys.emplace_back(key["kwh"], key["kwl"]);
    EXPECT_EQ(keys, (std::vector<std::pair<int, int>>{{9, 1}, {10, 1}, {10, 2}, {10, 10}, {100, 0}}));
}

TEST_F(RecordsTest, ListForPeopleHasALineForEachKeyAndATotal) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01", "0203"});
    EXPECT_EQ(done({"records", "list", drawing}), "key          records       bytes  sizes\n"
                                                  "10/0               2           3  1 2\n"
                                                  "store ASDWG: 1 key, 2 records, 3 bytes\n");
}

TEST_F(RecordsTest, StoresOfOneDrawingAreApart) {
    const std::string drawing = drawingWithStore();
    done({"store", "create", drawing, "OTHER"});
    put(drawing, "10/0", {"01"});
    put(drawing, "10/0", {"0202"}, {"--store", "OTHER"});
    EXPECT_EQ(listing(drawing), (Listing{{"10/0", {1}}}));
    EXPECT_EQ(listing(drawing, {"--store", "OTHER"}), (Listing{{"10/0", {2}}}));
}

TEST_F(RecordsTest, AStoreThatIsThereIsLeftAlone) {
    const std::string drawing = drawingWithStore();
    put(drawing, "10/0", {"01"});
    const std::string before = readWholeFile(drawing);
    EXPECT_NE(done({"store", "create", drawing, "ASDWG"}).find("already"), std::string::npos);
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(RecordsTest, NamesThatAreReservedMakeNoStore) {
    const std::string drawing = drawingWithStore();
    const std::string before = readWholeFile(drawing);
    expectFailure(taldork({"store", "create", drawing, "$Kelmoran"}), "'$Kelmoran'");
    expectFailure(taldork({"store", "create", drawing, ""}), "''");
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(RecordsTest, AMissingStoreIsToldInOneLine) {
    done({"new", file("bare.dwg")});
    const std::string bare = file("bare.dwg");
    const std::string before = readWholeFile(bare);
    expectFailure(taldork({"records", "list", bare}), bare);
    expectFailure(taldork({"records", "get", bare, "10/0"}), bare);
    expectFailure(taldork({"records", "put", bare, "10/0", "--hex", "01"}), bare);
    expectFailure(taldork({"records", "del", bare, "10/0"}), bare);
    EXPECT_TRUE(readWholeFile(bare) == before);
}

TEST_F(RecordsTest, ARecordOfNoBytesIsRefused) {
    const std::string drawing = drawingWithStore();
    const std::string before = readWholeFile(drawing);
    writeWholeFile(file("empty"), "");
    expectFailure(taldork({"records", "put", drawing, "10/0", "--file", file("empty")}), file("empty"));
    EXPECT_EQ(taldork({"records", "put", drawing, "10/0", "--hex", ""}).code, 2);
    expectFailure(taldork({"records", "put", drawing, "10/0", "--file", file("none")}), file("none"));
    EXPECT_TRUE(readWholeFile(drawing) == before);
}

TEST_F(RecordsTest, AStoreNameMayHoldAnyLetters) {
    const std::string drawing = drawingWithStore();
    done({"store", "create", drawing, "Geb\xc3\xa4ude \xe6\xa2\x81"});
    put(drawing, "10/0", {"01"}, {"--store", "Geb\xc3\xa4ude \xe6\xa2\x81"});
    const auto stores = json({"info", drawing})["stores"];
    ASSERT_EQ(stores.size(), 2U);
    EXPECT_EQ(stores[1]["name"], "Geb\xc3\xa4ude \xe6\xa2\x81");
}

} // namespace tests
