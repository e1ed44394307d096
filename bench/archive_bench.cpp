#include "ratio.h"

#include "base/blob.h"
#include "dbx/serArchives.h"

#include "gemat2d.h"
#include "gemat3d.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// 1 MiB of mixed values, written into and read from an archive as a plugin does, beside memcpy of the same
// bytes value by value into a vector whose room has been reserved.

namespace {

using namespace orv::serialization;

// What an element keeps: one value of each type that archives know.
struct Values {
    bool flag = true;
    signed char small = -3;
    unsigned char byte = 200;
    short width = -1234;
    unsigned short height = 54321;
    int number = -123456789;
    unsigned int magic = 0xafdb7de5;
    std::int64_t first = -1234567890123456789;
    std::uint64_t last = 0xfedcba9876543210;
    float factor = 0.25f;
    double load = 12.75;
    AcGePoint2d corner{1.0, 2.0};
    AcGeVector2d along{3.0, 4.0};
    AcGePoint3d point{5.0, 6.0, 7.0};
    AcGeVector3d direction{8.0, 9.0, 10.0};
    AcGeMatrix2d plane;
    AcGeMatrix3d transform;
    std::string name = "load case 17";
    std::wstring title = L"Wind from the left";
    orv::Blob blob{"0123456789abcdef0123456789abcdef", 32};
};

constexpr std::size_t kFiled = 1 + 1 + 1 + 2 + 2 + 4 + 4 + 8 + 8 + 4 + 8 + 16 + 16 + 24 + 24 + 72 + 128 +
                               (4 + 12) + (4 + 18 * 4) + (4 + 32);
constexpr std::size_t kBlock = std::size_t{1} << 20;
constexpr std::size_t kElements = kBlock / kFiled;

// Behind the interface, as plugins see it, and out of the compiler's sight.
[[gnu::noinline]] void write(IOutArchive& archive, const Values& v) {
    archive << v.flag << v.small << v.byte << v.width << v.height << v.number << v.magic << v.first << v.last
            << v.factor << v.load << v.corner << v.along << v.point << v.direction << v.plane << v.transform
            << v.name << v.title << v.blob;
}

[[gnu::noinline]] void read(IInArchive& archive, Values& v) {
    archive >> v.flag >> v.small >> v.byte >> v.width >> v.height >> v.number >> v.magic >> v.first >>
        v.last >> v.factor >> v.load >> v.corner >> v.along >> v.point >> v.direction >> v.plane >>
        v.transform >> v.name >> v.title >> v.blob;
}

// The peer: each value with memcpy behind the last one. The characters of its texts have the width in which
// they are filed, so that the bytes are the same.
class CopiedBytes {
public:
    explicit CopiedBytes(std::size_t size) { m_bytes.reserve(size); }
    const std::vector<unsigned char>& bytes() const { return m_bytes; }

    void put(const void* from, std::size_t size) {
        const std::size_t at = m_bytes.size();
        m_bytes.resize(at + size);
        std::memcpy(m_bytes.data() + at, from, size);
    }
    void putRun(const void* from, std::size_t size, std::size_t count) {
        const auto filed = static_cast<std::uint32_t>(count);
        put(&filed, sizeof filed);
        put(from, size);
    }

private:
    std::vector<unsigned char> m_bytes;
};

[[gnu::noinline]] void copy(CopiedBytes& to, const Values& v) {
    to.put(&v.flag, 1);
    to.put(&v.small, 1);
    to.put(&v.byte, 1);
    to.put(&v.width, 2);
    to.put(&v.height, 2);
    to.put(&v.number, 4);
    to.put(&v.magic, 4);
    to.put(&v.first, 8);
    to.put(&v.last, 8);
    to.put(&v.factor, 4);
    to.put(&v.load, 8);
    to.put(&v.corner, 16);
    to.put(&v.along, 16);
    to.put(&v.point, 24);
    to.put(&v.direction, 24);
    to.put(&v.plane, 72);
    to.put(&v.transform, 128);
    to.putRun(v.name.data(), v.name.size(), v.name.size());
    to.putRun(v.title.data(), v.title.size() * sizeof(wchar_t), v.title.size());
    to.putRun(v.blob.data(), v.blob.size(), v.blob.size());
}

std::vector<unsigned char> block() {
    CopiedBytes copied(kElements * kFiled);
    const Values values;
    for (std::size_t i = 0; i < kElements; ++i)
        copy(copied, values);
    return copied.bytes();
}

void writeArchive(benchmark::State& state) {
    const Values values;
    for (auto _ : state) {
        BinaryOutArchive archive;
        IOutArchive* seen = &archive;
        benchmark::DoNotOptimize(seen);
        for (std::size_t i = 0; i < kElements; ++i)
            write(*seen, values);
        benchmark::DoNotOptimize(archive.data());
        if (archive.offset() != kElements * kFiled)
            std::abort();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kElements * kFiled));
}
BENCHMARK(writeArchive)->Unit(benchmark::kMicrosecond)->Repetitions(5);

void copyValues(benchmark::State& state) {
    const Values values;
    for (auto _ : state) {
        CopiedBytes copied(kElements * kFiled);
        for (std::size_t i = 0; i < kElements; ++i)
            copy(copied, values);
        benchmark::DoNotOptimize(copied.bytes().data());
        if (copied.bytes().size() != kElements * kFiled)
            std::abort();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kElements * kFiled));
}
BENCHMARK(copyValues)->Unit(benchmark::kMicrosecond)->Repetitions(5);

void readArchive(benchmark::State& state) {
    const std::vector<unsigned char> bytes = block();
    Values values;
    for (auto _ : state) {
        BinaryInArchive archive(bytes.data(), bytes.size());
        IInArchive* seen = &archive;
        benchmark::DoNotOptimize(seen);
        for (std::size_t i = 0; i < kElements; ++i)
            read(*seen, values);
        benchmark::DoNotOptimize(values);
        if (archive.offset() != bytes.size())
            std::abort();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kElements * kFiled));
}
BENCHMARK(readArchive)->Unit(benchmark::kMicrosecond)->Repetitions(5);

const Comparison comparisons[] = {
    {"write 1 MiB of values, against memcpy", "writeArchive", "copyValues", 2.0},
    {"read 1 MiB of values, against memcpy", "readArchive", "copyValues", 2.0},
};

} // namespace
