#pragma once

#include "base/exceptions.h"
#include "dbx/binary_in_archive.h"
#include "dbx/binary_out_archive.h"
#include "dbx/elem/base.h"
#include "orvcore/warn_on_new_version.h"
#include "support/archive_bytes.h"
#include "support/report_recorder.h"

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

// The data of plugins as bytes written by hand.
namespace testing_support {

// Pieces of hex text in a row.
inline std::string joined(std::initializer_list<std::string> pieces) {
    std::string all;
    for (const std::string& piece : pieces)
        all += (all.empty() || piece.empty() ? "" : " ") + piece;
    return all;
}

// What IPlugin::save puts around a plugin's data.
inline std::string framed(const std::string& body) { return joined({"01 00 00 00", body, "e5 7d db af"}); }

// A body with its two lists of ids. Holds just as many bytes as there are, so that a step beside them is
// noticed.
struct StoredBody {
    StoredBody(const std::string& hex, std::deque<AcDbObjectId> soft = {}, std::deque<AcDbObjectId> hard = {})
        : StoredBody(fromHex(hex), std::move(soft), std::move(hard)) {}
    StoredBody(std::vector<unsigned char> of, std::deque<AcDbObjectId> soft, std::deque<AcDbObjectId> hard)
        : bytes(std::move(of)), softIds(std::move(soft)), hardIds(std::move(hard)) {
        bytes.shrink_to_fit();
    }

    // How many bytes `load` got, and what it answered.
    template <class Load>
    bool read(Load load, std::uint64_t* taken = nullptr) const {
        orv::serialization::BinaryInArchive archive(bytes.data(), bytes.size());
        archive.softPointers() = softIds;
        archive.hardPointers() = hardIds;
        const bool loaded = load(archive);
        if (taken != nullptr)
            *taken = archive.offset();
        return loaded;
    }

    std::vector<unsigned char> bytes;
    std::deque<AcDbObjectId> softIds;
    std::deque<AcDbObjectId> hardIds;
};

// Gathers the warnings of newer data while it lives.
class NewVersionRecorder {
public:
    NewVersionRecorder() {
        orv_forgetNewVersionWarnings();
        m_before = orv_setNewVersionSink(
            [this](const ORV_NewVersionWarning& warning) { warnings.push_back(warning); });
    }
    ~NewVersionRecorder() { orv_setNewVersionSink(m_before); }

    NewVersionRecorder(const NewVersionRecorder&) = delete;
    NewVersionRecorder& operator=(const NewVersionRecorder&) = delete;

    std::vector<ORV_NewVersionWarning> warnings;

private:
    ORV_NewVersionSink m_before;
};

// Loads every prefix of a framed body into a new plugin: each one but the whole ends in "filer error".
template <class Plugin>
void expectEveryPrefixToFail(const StoredBody& whole) {
    const ReportRecorder reports;
    for (std::size_t length = 0; length < whole.bytes.size(); ++length) {
        const std::vector<unsigned char> bytes(whole.bytes.begin(),
                                               whole.bytes.begin() + static_cast<std::ptrdiff_t>(length));
        const StoredBody prefix(bytes, whole.softIds, whole.hardIds);
        Plugin plugin;
        try {
            prefix.read([&plugin](auto& archive) { return plugin.load(archive, 6); });
            ADD_FAILURE() << "the first " << length << " bytes load";
        } catch (const orv::Exception& failure) {
            EXPECT_STREQ(failure.what(), "filer error") << length;
        }
    }
    Plugin plugin;
    EXPECT_TRUE(whole.read([&plugin](auto& archive) { return plugin.load(archive, 6); }));
}

// Loads a framed body with each of its bits turned, one at a time: each time there is an answer or "filer
// error", and what was loaded saves and loads again. How many of them were refused, in one way or the other.
template <class Plugin>
int refusedOfDamaged(const StoredBody& whole) {
    const ReportRecorder reports;
    const NewVersionRecorder warnings;
    int refused = 0;
    for (std::size_t bit = 0; bit < whole.bytes.size() * 8; ++bit) {
        StoredBody damaged = whole;
        damaged.bytes[bit / 8] = static_cast<unsigned char>(damaged.bytes[bit / 8] ^ (1 << bit % 8));
        Plugin plugin;
        bool loaded = false;
        try {
            loaded = damaged.read([&plugin](auto& archive) { return plugin.load(archive, 6); });
        } catch (const orv::Exception& failure) {
            EXPECT_STREQ(failure.what(), "filer error") << "bit " << bit;
        }
        refused += !loaded;
        orv::serialization::BinaryOutArchive again;
        EXPECT_TRUE(plugin.save(again)) << "bit " << bit;
        const StoredBody saved(blockOf(again), again.softPointers(), again.hardPointers());
        Plugin other;
        EXPECT_TRUE(saved.read([&other](auto& archive) { return other.load(archive, 6); })) << "bit " << bit;
    }
    return refused;
}

} // namespace testing_support
