// Entries that are deflated in blocks by several threads.
#include "zip/deflating/entry_deflater.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/zip/faults.h"
#include "zip/deflating/block_deflater.h"
#include "zip/zip_memory_buffer.h"
#include "zip/zip_reader.h"
#include "zip/zip_writer.h"

namespace zip {
namespace {

constexpr std::size_t block = 256 << 10;

class Collected final : public DeflatedSink {
public:
    bool take(std::span<const unsigned char> bytes) override {
        _bytes.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return true;
    }
    const std::string& bytes() const { return _bytes; }

private:
    std::string _bytes;
};

std::string noise(std::size_t size) {
    std::mt19937 random(7);
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    return bytes;
}

std::string cells(std::size_t size) {
    std::mt19937 random(8);
    std::string bytes;
    for (int row = 1; bytes.size() < size; ++row) {
        bytes += "<c r=\"A" + std::to_string(row) + "\"><v>" + std::to_string(random() % 100000) + "</v></c>";
    }
    bytes.resize(size);
    return bytes;
}

std::string deflated(const std::string& bytes, unsigned threads) {
    Collected sink;
    EntryDeflater deflater(sink, threads);
    deflater.begin();
    for (std::size_t at = 0; at < bytes.size(); at += 100000) {
        EXPECT_TRUE(deflater.write(bytes.data() + at, std::min<std::size_t>(100000, bytes.size() - at)));
    }
    EXPECT_TRUE(deflater.end());
    EXPECT_EQ(deflater.size(), bytes.size());
    EXPECT_EQ(deflater.crc(), crc32_z(0, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
    return sink.bytes();
}

/// By zlib in one go; nothing where the stream is damaged or does not end with its last byte.
std::optional<std::string> inflated(const std::string& stream, std::size_t size) {
    z_stream z = {};
    if (inflateInit2(&z, -MAX_WBITS) != Z_OK) return {};
    std::string bytes(size + 1, '\0');
    z.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(stream.data()));
    z.avail_in = static_cast<uInt>(stream.size());
    z.next_out = reinterpret_cast<unsigned char*>(bytes.data());
    z.avail_out = static_cast<uInt>(bytes.size());
    const int code = inflate(&z, Z_FINISH);
    bytes.resize(z.total_out);
    const bool whole = code == Z_STREAM_END && z.avail_in == 0;
    inflateEnd(&z);
    return whole ? std::optional(bytes) : std::nullopt;
}

TEST(EntryDeflater, GivesOneStreamWhateverTheNumberOfThreads) {
    const std::size_t sizes[] = {0, 1, 100, block - 1, block, block + 1, 3 * block, 11 * block + 4321};
    for (const std::size_t size : sizes) {
        for (const std::string& bytes : {cells(size), noise(size), std::string(size, 'x')}) {
            SCOPED_TRACE(std::to_string(size) + " bytes like " + bytes.substr(0, 3));
            const std::string alone = deflated(bytes, 1);
            EXPECT_EQ(inflated(alone, size), bytes);
            for (const unsigned threads : {2U, 3U, 8U, 1000U}) EXPECT_EQ(deflated(bytes, threads), alone) << threads;
        }
    }
}

TEST(EntryDeflater, IsNoLargerThanZlibByMoreThanAHundredth) {
    for (const std::string& bytes : {cells(5000000), cells(30000), noise(700000), std::string(3000000, 'x')}) {
        uLongf plain = compressBound(bytes.size());
        std::vector<Bytef> stream(plain);
        compress(stream.data(), &plain, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
        const std::size_t joints = 24 * (bytes.size() / block + 1);
        EXPECT_LE(deflated(bytes, 2).size(), plain + plain / 100 + joints) << bytes.substr(0, 3);
    }
}

/// Both ways of deflating, whichever the build prefers.
TEST(BlockDeflater, StretchesJoinToOneStream) {
    for (auto* const make : {makeBlockDeflater, makeZlibBlockDeflater}) {
        for (const std::string& bytes : {cells(5 * block), noise(3 * block), std::string(2 * block, 'x')}) {
            const auto deflater = make(block);
            std::vector<unsigned char> room(deflater->bound());
            const std::span all(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
            std::string joined;
            // Sizes at which the last code of a stretch ends at every bit of a byte.
            for (std::size_t at = 0, part = 1; at < all.size(); at += part, part = std::min(block, part * 5 / 4 + 1)) {
                part = std::min(part, all.size() - at);
                const std::size_t window = std::min(at, deflateWindow);
                const std::size_t size = deflater->deflate(all.subspan(at - window, window), all.subspan(at, part),
                                                           at + part == all.size(), room);
                ASSERT_GT(size, 0U);
                joined.append(reinterpret_cast<const char*>(room.data()), size);
            }
            EXPECT_EQ(inflated(joined, bytes.size()), bytes);
        }
    }
}

/// An archive of one large entry between two small ones; empty when anything fails.
std::string archiveOf(const std::string& large) {
    ZipMemoryBuffer buffer;
    ZipWriter writer;
    bool good = writer.createInBuffer(buffer);
    for (const std::string& content : {std::string("first"), large, std::string("last")}) {
        good = good && writer.openEntry(content.substr(0, 5)) && writer.writeEntry(content.data(), content.size()) &&
               writer.closeEntry();
    }
    good = writer.close() && good;
    return good ? std::string(buffer.data(), buffer.size()) : std::string();
}

/// Archives bear the time of their making, so that their entries are compared.
std::vector<std::string> entriesOf(const std::string& archive) {
    std::vector<std::string> entries;
    ZipReader reader;
    reader.openForRead(archive.data(), archive.size());
    for (std::size_t i = 0; i < reader.entryCount(); ++i) {
        const ZipMemoryBuffer bytes = reader.extract(i);
        entries.push_back(std::to_string(reader.entry(i).compressedSize) + " " +
                          std::string(bytes.data(), bytes.size()));
    }
    return entries;
}

class Threads : public ::testing::Test {
protected:
    ~Threads() override { unsetenv("QUILLET_THREADS"); }
    static void use(int threads) { setenv("QUILLET_THREADS", std::to_string(threads).c_str(), 1); }
};

TEST_F(Threads, ThatDoNotStartAreDoneWithout) {
    use(4);
    const std::string bytes = cells(6 * block);
    const auto whole = entriesOf(archiveOf(bytes));
    for (int before = 0; before < 3; ++before) {
        const testing::FaultAhead fault(testing::Fault::thread, before);
        EXPECT_EQ(entriesOf(archiveOf(bytes)), whole) << before;
        EXPECT_TRUE(fault.struck());
    }
    const testing::FaultAhead none(testing::Fault::thread, 0, true);
    EXPECT_EQ(entriesOf(archiveOf(bytes)), whole);
    use(1);
    EXPECT_EQ(entriesOf(archiveOf(bytes)), whole);
}

/// Whichever request for memory is refused, the archive is whole or its failure is told.
TEST_F(Threads, EndWithTheCallWhenMemoryIsShort) {
    use(3);
    const std::string bytes = noise(6 * block);
    const auto whole = entriesOf(archiveOf(bytes));
    for (const testing::Fault kind : {testing::Fault::allocation, testing::Fault::reallocation}) {
        bool struck = true;
        int failures = 0;
        for (int before = 0; struck; ++before) {
            std::string archive;
            try {
                const testing::FaultAhead fault(kind, before);
                archive = archiveOf(bytes);
                struck = fault.struck();
            } catch (const std::bad_alloc&) {  // of this test's own texts
                archive.clear();
            }
            failures += archive.empty();
            if (!archive.empty()) {
                EXPECT_EQ(entriesOf(archive), whole) << before;
            }
            EXPECT_TRUE(struck || !archive.empty());
        }
        EXPECT_GT(failures, 5) << static_cast<int>(kind);
    }
}

/// No thread outlives its call, so that a host may fork between two: both processes go on.
TEST_F(Threads, LeaveAForkAlone) {
    use(4);
    const std::string bytes = cells(6 * block);
    const auto whole = entriesOf(archiveOf(bytes));
    for (int i = 0; i < 5; ++i) {
        const pid_t child = fork();
        ASSERT_NE(child, -1);
        if (child == 0) {
            alarm(60);  // a lock that a thread of the other process had would never open
            _exit(entriesOf(archiveOf(bytes)) == whole ? 0 : 1);
        }
        EXPECT_EQ(entriesOf(archiveOf(bytes)), whole);
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
}

TEST_F(Threads, OfEightContextsAtOnce) {
    use(3);
    const std::string bytes = cells(8 * block);
    const auto whole = entriesOf(archiveOf(bytes));
    std::vector<std::thread> contexts;
    std::vector<std::string> archives(8);
    for (std::string& archive : archives) contexts.emplace_back([&] { archive = archiveOf(bytes); });
    for (std::thread& context : contexts) context.join();
    for (const std::string& archive : archives) EXPECT_EQ(entriesOf(archive), whole);
}

TEST(HelperThread, LeavesSignalsToTheProcess) {
    sigset_t before, inside, after;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    HelperThread helper;
    ASSERT_TRUE(helper.start(
        [](void* mask) -> void* {
            pthread_sigmask(SIG_SETMASK, nullptr, static_cast<sigset_t*>(mask));
            return nullptr;
        },
        &inside));
    helper.join();
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    for (const int signal : {SIGINT, SIGTERM, SIGCHLD, SIGALRM, SIGPROF, SIGUSR1}) {
        EXPECT_EQ(sigismember(&inside, signal), 1) << signal;
        EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal)) << signal;
    }
}

}  // namespace
}  // namespace zip
