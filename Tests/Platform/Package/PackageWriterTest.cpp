#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <Package/PackageReader.h>
#include <Package/PackageWriter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <msopc.h>
#include <sys/resource.h>

#include <csignal>
#include <functional>
#include <random>
#include <thread>

using namespace OvPlatform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

void Add(PackageWriter& writer, const std::string& name, const std::string& bytes,
         const std::string& type = "text/xml", PackageCompression compression = PackageCompression::Normal) {
    const auto sink = writer.AddPart(name, type, compression);
    sink->Write(bytes.data(), bytes.size());
    sink->Close();
}

std::string Noise(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string noise(size, '\0');
    for (char& c : noise)
        c = static_cast<char>(random());
    return noise;
}

std::pair<HRESULT, std::string> Failure(const std::function<void()>& call) {
    try {
        call();
        return {S_OK, ""};
    } catch (const PackageError& error) {
        return {error.Result(), error.what()};
    }
}

// A sanitizer keeps freed memory, so that a peak says nothing.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

class PackageWriterTest : public testing::Test {
protected:
    TemporaryFolder m_folder;
    const std::filesystem::path m_target = m_folder / "out.xps";
};

} // namespace

TEST_F(PackageWriterTest, WritesWhatTheReaderReads) {
    const auto writer = PackageWriter::Create(m_target);
    const std::string noise = Noise(300000, 1);
    Add(*writer, "/a/page.xml", "<page/>");
    Add(*writer, "/a/font.odttf", noise, "font/x", PackageCompression::None);
    Add(*writer, "/other.xml", std::string(100000, 'x'), "other/type", PackageCompression::Small);
    Add(*writer, "/noextension", "", "odd/type", PackageCompression::Fast);
    EXPECT_EQ(writer->AddRelationship("/", "urn:start", "/a/page.xml"), "R1");
    EXPECT_EQ(writer->AddRelationship("/", "urn:start", "/a/page.xml"), "R1") << "said already";
    EXPECT_EQ(writer->AddRelationship("/", "urn:<&\">", "http://x/?a&b", true), "R2");
    EXPECT_EQ(writer->AddRelationship("/a/page.xml", "urn:font", "/a/font.odttf", false, "R2"), "R2");
    EXPECT_EQ(writer->AddRelationship("/a/page.xml", "urn:other", "/other.xml"), "R3");
    EXPECT_EQ(writer->BytesWritten(), 7 + 300000 + 100000u);
    writer->Finish();
    writer->Commit();
    EXPECT_THAT(m_folder.Names(), ElementsAre("out.xps"));

    const auto package = PackageReader::Open(m_target);
    ASSERT_EQ(package->Parts().size(), 4u);
    EXPECT_EQ(package->Parts()[0].name, "/a/page.xml") << "in the order of adding";
    EXPECT_EQ(package->Find("/noextension")->contentType, "odd/type");
    EXPECT_EQ(package->Find("/other.xml")->contentType, "other/type") << "not that of its extension";
    EXPECT_EQ(package->ReadPart("/a/font.odttf", 1 << 20), noise);
    EXPECT_EQ(package->ReadPart("/other.xml", 1 << 20), std::string(100000, 'x'));
    EXPECT_EQ(package->Find("/a/font.odttf")->storedSize, 300000u);
    EXPECT_LT(package->Find("/other.xml")->storedSize, 1000u);
    const auto root = package->Relationships("/");
    ASSERT_EQ(root.size(), 2u);
    EXPECT_EQ(root[0].targetPart, "/a/page.xml");
    EXPECT_EQ(root[1].type + " " + root[1].target, "urn:<&\"> http://x/?a&b");
    const auto page = package->Relationships("/a/page.xml");
    ASSERT_EQ(page.size(), 2u);
    EXPECT_EQ(page[0].target, "font.odttf");
    EXPECT_EQ(page[1].targetPart, "/other.xml");
}

TEST_F(PackageWriterTest, SaysEachOfFewAndOfManyRelationshipsOnce) {
    const auto writer = PackageWriter::Create(m_target);
    Add(*writer, "/a", "x");
    const auto add = [&](int number, bool external = false, const char* id = "") {
        return writer->AddRelationship("/", "t" + std::to_string(number), "/a", external, id);
    };
    for (int number = 1; number <= 100; ++number) {
        const std::string id = 'R' + std::to_string(number);
        ASSERT_EQ(add(number), id);
        for (const int before : {1, (number + 1) / 2, number}) {
            ASSERT_EQ(add(before), 'R' + std::to_string(before)) << number;
            const std::string taken = 'R' + std::to_string(before);
            ASSERT_EQ(Failure([&] { add(number + 1, false, taken.c_str()); }).first,
                      OPC_E_DUPLICATE_RELATIONSHIP);
        }
    }
    EXPECT_EQ(add(1, true), "R101") << "that is another one";
    EXPECT_EQ(add(1), "R1");
}

TEST_F(PackageWriterTest, TakesPartsSideBySideAndGivesTheSameBytes) {
    const std::string noise[] = {Noise(400000, 1), Noise(400000, 2), std::string(500000, 'z')};
    for (const char* target : {"out.xps", "again.xps"}) {
        const auto writer = PackageWriter::Create(m_folder / target);
        std::unique_ptr<PackagePartSink> sinks[3];
        for (int i = 0; i < 3; ++i)
            sinks[i] = writer->AddPart("/" + std::to_string(i), "t",
                                       i ? PackageCompression::Normal : PackageCompression::None);
        for (std::size_t at = 0; at < 500000; at += 50000)
            for (int i = 2; i >= 0; --i)
                if (at < noise[i].size()) sinks[i]->Write(noise[i].data() + at, 50000);
        for (const auto& sink : sinks)
            sink->Close();
        writer->Finish();
        writer->Commit();
    }
    EXPECT_EQ(TemporaryFolder::Read(m_target), TemporaryFolder::Read(m_folder / "again.xps"));
    const auto package = PackageReader::Open(m_target);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(package->ReadPart("/" + std::to_string(i), 1 << 20), noise[i]);
}

TEST_F(PackageWriterTest, TakesPartsFromSeveralThreads) {
    const auto writer = PackageWriter::Create(m_target);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 50; ++i) {
                const std::string name = "/t" + std::to_string(t) + "/" + std::to_string(i);
                Add(*writer, name, name);
                writer->AddRelationship("/", "urn:x", name);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    writer->Finish();
    writer->Commit();
    const auto package = PackageReader::Open(m_target);
    EXPECT_EQ(package->Relationships("/").size(), 200u);
    for (const PackagePart& part : package->Parts())
        EXPECT_EQ(package->ReadPart(part.name, 100), part.name);
}

TEST_F(PackageWriterTest, LeavesNothingBehindUnlessFinished) {
    m_folder.Write("out.xps", "before");
    {
        const auto writer = PackageWriter::Create(m_target);
        Add(*writer, "/a", Noise(1 << 20, 1));
        EXPECT_THAT(m_folder.Names(), ElementsAre("out.xps"));
    }
    // A sink may outlive its writer.
    auto writer = PackageWriter::Create(m_target);
    const auto sink = writer->AddPart("/a", "t", PackageCompression::Normal);
    writer.reset();
    sink->Write("x", 1);
    sink->Close();
    EXPECT_THAT(m_folder.Names(), ElementsAre("out.xps"));
    EXPECT_EQ(TemporaryFolder::Read(m_target), "before");

    EXPECT_EQ(Failure([&] { PackageWriter::Create(m_folder / "none/out.xps"); }).first,
              HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
}

TEST_F(PackageWriterTest, LeavesOutPartsThatWereNotClosed) {
    const auto writer = PackageWriter::Create(m_target);
    writer->AddPart("/gone", "t", PackageCompression::Normal)->Write("abc", 3);
    EXPECT_FALSE(writer->HasPart("/gone"));
    writer->AddPart("/AGAIN2", "t", PackageCompression::Normal)->Write("abc", 3);
    Add(*writer, "/again2", "second");
    writer->AddPart("/folder/gone", "t", PackageCompression::Normal)->Write("abc", 3);
    Add(*writer, "/folder", "no folder any more");
    writer->Finish();
    writer->Commit();
    const auto package = PackageReader::Open(m_target);
    EXPECT_EQ(package->Parts().size(), 2u);
    EXPECT_EQ(package->ReadPart("/again2", 100), "second");
}

TEST_F(PackageWriterTest, RefusesWhatMakesNoPackage) {
    const auto writer = PackageWriter::Create(m_target);
    Add(*writer, "/a/b", "x");
    Add(*writer, "/far/in/b", "x");
    const Rows<const char*, std::function<void()>, HRESULT> rows{
        {"name twice", [&] { Add(*writer, "/A/B", "x"); }, OPC_E_DUPLICATE_PART},
        {"name extended", [&] { Add(*writer, "/a/b/c", "x"); }, OPC_E_DUPLICATE_PART},
        {"name that extends", [&] { Add(*writer, "/A", "x"); }, OPC_E_DUPLICATE_PART},
        {"name that extends far", [&] { Add(*writer, "/far", "x"); }, OPC_E_DUPLICATE_PART},
        {"no name", [&] { Add(*writer, "a", "x"); }, OPC_E_NONCONFORMING_URI},
        {"relationships part", [&] { Add(*writer, "/_rels/.rels", "x"); }, OPC_E_NONCONFORMING_URI},
        {"no type", [&] { Add(*writer, "/c", "x", ""); }, OPC_E_INVALID_CONTENT_TYPE},
        {"target that is no part", [&] { writer->AddRelationship("/", "t", "../x"); },
         OPC_E_INVALID_RELATIONSHIP_TARGET},
        {"id twice",
         [&] {
             writer->AddRelationship("/a/b", "t", "/a/b", false, "I");
             writer->AddRelationship("/a/b", "u", "/a/b", false, "I");
         },
         OPC_E_DUPLICATE_RELATIONSHIP},
    };
    for (const auto& [what, call, wantedResult] : rows) {
        const auto [result, text] = Failure(call);
        EXPECT_EQ(result, wantedResult) << what << ": " << text;
    }

    const auto open = writer->AddPart("/open", "t", PackageCompression::Normal);
    EXPECT_THAT(Failure([&] { writer->Finish(); }).second, HasSubstr("/open: the part was not closed"));
    open->Close();
    EXPECT_EQ(Failure([&] { open->Write("x", 1); }).first, E_UNEXPECTED);
    writer->AddRelationship("/a/b", "t", "/missing");
    const auto [result, text] = Failure([&] { writer->Finish(); });
    EXPECT_EQ(result, OPC_E_NO_SUCH_PART);
    EXPECT_THAT(text, HasSubstr("/a/_rels/b.rels: the relationship 'R2' leads to '/missing'"));
    EXPECT_THAT(m_folder.Names(), IsEmpty());
    Add(*writer, "/missing", "now there");
    writer->Finish();
    writer->Commit();
    EXPECT_EQ(Failure([&] { writer->Finish(); }).first, E_UNEXPECTED);
    EXPECT_EQ(Failure([&] { writer->Commit(); }).first, E_UNEXPECTED);
    EXPECT_THAT(m_folder.Names(), ElementsAre("out.xps"));
}

TEST_F(PackageWriterTest, IsGivenUpAtAnyMomentBeforeItHasItsName) {
    m_folder.Write("out.xps", "before");
    for (int last = 0;; ++last) {
        const auto writer = PackageWriter::Create(m_target);
        for (const char* name : {"/1", "/2", "/3"}) {
            Add(*writer, name, "text");
            writer->AddRelationship(name, "t", "/1");
        }
        EXPECT_EQ(Failure([&] { writer->Commit(); }).first, E_UNEXPECTED) << "it is not complete";
        int asked = 0;
        const HRESULT result = Failure([&] { writer->Finish([&] { return asked++ == last; }); }).first;
        EXPECT_EQ(TemporaryFolder::Read(m_target), "before");
        if (result == S_OK) { // it was asked less often, or too late; the package goes without its name
            EXPECT_GT(last, 4);
            break;
        }
        ASSERT_EQ(result, E_ABORT);
        EXPECT_THAT(m_folder.Names(), ElementsAre("out.xps"));
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("out.xps"));
}

TEST_F(PackageWriterTest, SaysThatTheDiskIsFull) {
    // A limit on the size of files stands for a disk that is full; it acts on this process alone.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto ignored = signal(SIGXFSZ, SIG_IGN);
    auto writer = PackageWriter::Create(m_target);
    rlimit small = before;
    small.rlim_cur = 100000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string noise = Noise(1 << 20, 1);
    const auto [result, text] = Failure([&] {
        for (int i = 0; i < 8; ++i)
            Add(*writer, "/" + std::to_string(i), noise);
        writer->Finish();
    });
    writer.reset();
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, ignored);
    EXPECT_EQ(result, HRESULT_FROM_WIN32(ERROR_WRITE_FAULT)) << text;
    EXPECT_THAT(text, HasSubstr("cannot be written"));
    EXPECT_THAT(m_folder.Names(), IsEmpty());
}

TEST_F(PackageWriterTest, KeepsMemoryFlatForALargePart) {
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss; // KiB
    };
    const std::string block = Noise(1 << 20, 3);
    const long before = peak();
    const auto writer = PackageWriter::Create(m_target);
    const auto sink = writer->AddPart("/large", "t", PackageCompression::Fast);
    for (int i = 0; i < 32; ++i)
        sink->Write(block.data(), block.size());
    sink->Close();
    writer->Finish();
    writer->Commit();
    const auto stream = PackageReader::Open(m_target)->OpenPart("/large");
    stream->Seek(stream->Size() - 1); // reads all before
    if (!sanitized) {
        EXPECT_LT(peak() - before, 16 << 10) << "KiB for a part of 32 MiB";
    }
}
