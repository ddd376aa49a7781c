#include "Platform/Package/ZipBuilder.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TemporaryFolder.h"

#include <Package/PackageReader.h>
#include <Package/PackageWriter.h>
#include <Package/ZipArchive.h>
#include <Package/ZipRecords.h>
#include <Package/ZipWriter.h>
#include <System/FileError.h>
#include <System/OutputFile.h>
#include <System/StreamOutput.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <msopc.h>
#include <signal.h>
#include <unistd.h>

#include <random>
#include <thread>

using namespace OvPlatform;
using testing::HasSubstr;

namespace {

const std::string hello = "hello hello hello hello\n";
const std::string helloDeflated("\xCB\x48\xCD\xC9\xC9\x57\xC8\x40\x27\xB9\x00", 11);
constexpr std::uint32_t helloChecksum = 0x0B598800;

std::string Noise(std::size_t size) {
    std::mt19937 random(1);
    std::string noise(size, '\0');
    for (char& c : noise)
        c = static_cast<char>(random());
    return noise;
}

void Write(PackagePartSink& sink, const std::string& bytes) { sink.Write(bytes.data(), bytes.size()); }

void Add(PackageWriter& writer, const std::string& name, const std::string& bytes,
         PackageCompression compression = PackageCompression::Normal) {
    const auto sink = writer.AddPart(name, "text/xml", compression);
    Write(*sink, bytes);
    sink->Close();
}

template <class Step>
std::pair<HRESULT, std::string> Failure(Step&& step) {
    try {
        step();
        return {S_OK, ""};
    } catch (const PackageError& error) {
        return {error.Result(), error.what()};
    }
}

struct Ends {
    int read = -1;
    int write = -1;

    Ends() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) == 0) read = ends[0], write = ends[1];
    }
    ~Ends() {
        CloseReader();
        close(write);
    }
    void CloseReader() {
        if (read >= 0) close(std::exchange(read, -1));
    }
};

class StreamedPackageTest : public testing::Test {
protected:
    std::shared_ptr<const PackageReader> Open(const std::vector<ZipEntry>& entries) {
        return PackageReader::Open(m_folder.Write("in.xps", BuildZip(entries)));
    }

    TemporaryFolder m_folder;
    const std::filesystem::path m_target = m_folder / "out.xps";
};

} // namespace

TEST_F(StreamedPackageTest, TakesPartsOverAsTheyArePacked) {
    const std::string noise = Noise(700'000);
    const auto from = Open(WithTypes({{"a.xml", helloDeflated, 8, 8, 24u, helloChecksum},
                                      {"b.xml", "stored"},
                                      {"empty.xml", ""},
                                      {"large.xml", noise},
                                      {"p.xml/[0].piece", "in "},
                                      {"p.xml/[1].last.piece", "pieces"}}));
    EXPECT_EQ(from->OpenPacked("/p.xml"), nullptr);
    EXPECT_EQ(from->ReadPart("/b.xml", 100), "stored") << "read before, and taken over after that";
    const auto writer = PackageWriter::Create(m_target);
    const auto beside = writer->AddPart("/beside.xml", "text/xml", PackageCompression::Fast);
    Write(*beside, noise); // in the archive, ahead of what comes while it is open
    for (const char* name : {"/a.xml", "/b.xml", "/empty.xml", "/large.xml"})
        TakeOverPart(*writer, name, "text/xml", *from->OpenPacked(name));
    Write(*beside, hello);
    beside->Close();
    const auto lying = writer->AddPackedPart("/lying.xml", "text/xml", {true, 24, 11, helloChecksum});
    Write(*lying, "short");
    EXPECT_EQ(Failure([&] { lying->Close(); }).first, E_UNEXPECTED);
    EXPECT_EQ(writer->BytesWritten(), 2 * noise.size() + 2 * hello.size() + 6);
    writer->AddRelationship("/a.xml", "t", "/b.xml");
    EXPECT_THAT(Failure([&] { writer->Finish(); }).second, HasSubstr("/lying.xml: the part was not closed"));
}

TEST_F(StreamedPackageTest, IsReadByOthers) {
    const std::string noise = Noise(700'000), text(900'000, 'x');
    const auto from = Open(WithTypes({{"a.xml", helloDeflated, 8, 0, 24u, helloChecksum}}));
    {
        const auto writer = PackageWriter::Create(m_target);
        TakeOverPart(*writer, "/a.xml", "text/xml", *from->OpenPacked("/a.xml"));
        Write(*writer->AddPart("/1.xml", "text/xml", PackageCompression::Normal), noise); // given up
        const auto first = writer->AddPart("/1.xml", "text/xml", PackageCompression::Normal);
        const auto second = writer->AddPart("/2.xml", "text/xml", PackageCompression::None);
        for (std::size_t at = 0; at < noise.size(); at += 100'000) {
            first->Write(noise.data() + at, 100'000);
            second->Write(noise.data() + at, 100'000);
        }
        Add(*writer, "/small.xml", hello); // complete while the first one is in the archive
        first->Close();
        second->Close();
        Add(*writer, "/3.xml", text);
        for (const char* source : {"/a.xml", "/small.xml", "/"}) // twice in the same words, and in others
            writer->AddRelationship(source, "t", source[1] == '\0' ? "/a.xml" : "/1.xml");
        writer->AddRelationship("/", "t<&\">", "http://x/", true);
        writer->Finish();
        EXPECT_EQ(Failure([&] { Add(*writer, "/late.xml", ""); }).first, E_UNEXPECTED);
        writer->Commit();
        EXPECT_EQ(writer->Size(), std::filesystem::file_size(m_target));
    }
    const ZipItems items = ReadZip(m_target); // by another library
    EXPECT_EQ(items.size(), 9u);
    EXPECT_EQ(items.at("a.xml"), hello);
    EXPECT_EQ(items.at("1.xml"), noise);
    EXPECT_EQ(items.at("2.xml"), noise);
    EXPECT_EQ(items.at("small.xml"), hello);
    EXPECT_EQ(items.at("3.xml"), text);
    EXPECT_EQ(items.at("_rels/a.xml.rels"), items.at("_rels/small.xml.rels"));
    EXPECT_THAT(items.at("_rels/a.xml.rels"), HasSubstr(R"(Type="t" Target="1.xml" Id="R1")"));
    const std::string& root = items.at("_rels/.rels");
    EXPECT_EQ(root.substr(0, root.find("<Relationship ")),
              items.at("_rels/a.xml.rels").substr(0, root.find("<Relationship ")));
    EXPECT_EQ(PackageReader::Open(m_target)->ReadPart("/1.xml", 1 << 20), noise);
}

TEST_F(StreamedPackageTest, DamageIsFoundAlsoInWhatIsTakenOver) {
    const Rows<const char*, ZipEntry, HRESULT> rows{
        {"checksum", {"a.xml", helloDeflated, 8, 0, 24u, 7u}, OPC_E_ZIP_CORRUPTED_ARCHIVE},
        {"checksum of what is stored", {"a.xml", "stored", 0, 0, {}, 7u}, OPC_E_ZIP_CORRUPTED_ARCHIVE},
        {"compressed data", {"a.xml", "\xFF\xFF\xFF", 8, 0, 24u, 1u}, OPC_E_ZIP_DECOMPRESSION_FAILED},
        {"too long", {"a.xml", helloDeflated, 8, 0, 23u, helloChecksum}, OPC_E_ZIP_INCORRECT_DATA_SIZE},
        {"too short", {"a.xml", helloDeflated, 8, 0, 25u, helloChecksum}, OPC_E_ZIP_INCORRECT_DATA_SIZE},
        {"more behind it",
         {"a.xml", helloDeflated + "?", 8, 0, 24u, helloChecksum},
         OPC_E_ZIP_INCORRECT_DATA_SIZE},
        {"no end",
         {"a.xml", helloDeflated.substr(0, 10), 8, 0, 24u, helloChecksum},
         OPC_E_ZIP_INCORRECT_DATA_SIZE},
    };
    for (const auto& [what, entry, wanted] : rows) {
        const auto from = Open(WithTypes({entry}));
        const auto writer = PackageWriter::Create(m_target);
        const auto take = [&] { TakeOverPart(*writer, "/a.xml", "text/xml", *from->OpenPacked("/a.xml")); };
        for (const bool isReadBefore : {false, true}) { // through to its end, where that goes
            if (isReadBefore) Failure([&] { from->ReadPart("/a.xml", 100); });
            const auto [result, text] = Failure(take);
            EXPECT_EQ(result, wanted) << what << ": " << text;
            EXPECT_THAT(text, HasSubstr("/a.xml: "));
            // Some of it a reader of the part would not notice.
            Failure([&] { from->ReadPart("/a.xml", 100); });
        }
        EXPECT_FALSE(writer->HasPart("/a.xml")) << what;
    }
}

TEST_F(StreamedPackageTest, RelationshipsAreWrittenOnceTheyAreComplete) {
    const auto writer = PackageWriter::Create(m_target);
    writer->AddRelationship("/a.xml", "t", "/later.xml");
    EXPECT_EQ(Failure([&] { writer->CompleteRelationships("/a.xml"); }).first, OPC_E_NO_SUCH_PART);
    Add(*writer, "/a.xml", "a");
    for (int again = 0; again < 2; ++again)
        writer->CompleteRelationships("/A.xml");
    EXPECT_EQ(Failure([&] { writer->AddRelationship("/a.xml", "u", "/a.xml"); }).first, E_UNEXPECTED);
    const auto [result, text] = Failure([&] { writer->Finish(); });
    EXPECT_EQ(result, OPC_E_NO_SUCH_PART);
    EXPECT_THAT(text, HasSubstr("/_rels/a.xml.rels: the relationship 'R1' leads to '/later.xml'"));
    Add(*writer, "/later.xml", "b");
    // As long as a name may be for that of the relationships part to fit into an archive.
    const std::string longest = "/" + std::string(0xFFFF - std::string_view("_rels/.rels").size(), 'n');
    EXPECT_EQ(Failure([&] { Add(*writer, longest + 'n', "c"); }).first, OPC_E_NONCONFORMING_URI);
    Add(*writer, longest, "c");
    writer->AddRelationship(longest, "t", "/a.xml");
    writer->Finish();
    writer->Commit();
    const auto package = PackageReader::Open(m_target);
    EXPECT_EQ(package->Relationships("/a.xml").at(0).targetPart, "/later.xml");
    EXPECT_EQ(package->Relationships(longest).at(0).targetPart, "/a.xml");
}

TEST_F(StreamedPackageTest, RelationshipsAreTakenOverWhereTheySayTheSame) {
    const auto markup = [](const char* first, const char* second) {
        return std::string("<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/"
                           "relationships\"><Relationship Id=\"x\" Type=\"t\" Target=\"")
            .append(first)
            .append("\"/><Relationship Id=\"y\" Type=\"u\" Target=\"")
            .append(second)
            .append("\"/></Relationships>");
    };
    const auto from = Open(WithTypes({{"a.xml", "a"},
                                      {"b.xml", "b"},
                                      {"c.xml", "c"},
                                      {"_rels/a.xml.rels", markup("/b.xml", "/b.xml")},
                                      {"_rels/b.xml.rels", markup("/c.xml", "/b.xml")},
                                      {"_rels/c.xml.rels", markup("/a.xml", "/a.xml")}}));
    const auto writer = PackageWriter::Create(m_target);
    EXPECT_EQ(from->OpenPackedRelationships("/a.xml"), nullptr) << "nobody has read and checked them";
    for (const char* source : {"/a.xml", "/b.xml", "/c.xml"}) {
        TakeOverPart(*writer, source, "text/xml", *from->OpenPacked(source));
        const auto relationships = from->Relationships(source);
        EXPECT_FALSE(writer->HasJust(source, relationships));
        writer->AddRelationship(source, "u", relationships[1].targetPart);
        EXPECT_FALSE(writer->HasJust(source, relationships)) << "one of two";
        EXPECT_FALSE(writer->HasJust(source, {relationships[0]})) << "another one";
        writer->AddRelationship(source, source[1] == 'c' ? "v" : "t", "/b.xml");
        EXPECT_EQ(writer->HasJust(source, relationships), source[1] == 'a') << source;
        const auto packed = from->OpenPackedRelationships(source);
        ASSERT_NE(packed, nullptr);
        std::vector<std::uint8_t> bytes(packed->Form().storedSize);
        ASSERT_EQ(packed->Read(bytes.data(), bytes.size()), bytes.size());
        const std::vector<std::uint8_t> part(bytes.begin(), bytes.end() - 1);
        EXPECT_EQ(Failure([&] { writer->CompleteRelationships(source, packed->Form(), part); }).first,
                  E_UNEXPECTED);
        if (source[1] == 'a') writer->CompleteRelationships(source, packed->Form(), bytes);
        writer->CompleteRelationships(source);
    }
    EXPECT_TRUE(writer->HasJust("/none.xml", {}));
    writer->Finish();
    writer->Commit();
    const ZipItems items = ReadZip(m_target);
    EXPECT_EQ(items.at("_rels/a.xml.rels"), markup("/b.xml", "/b.xml"));
    EXPECT_THAT(items.at("_rels/b.xml.rels"), HasSubstr(R"(Type="u" Target="b.xml" Id="R1")"));
}

TEST_F(StreamedPackageTest, HoldsMoreItemsThanSixteenBitsCount) {
    constexpr std::size_t many = 66'000;
    const auto writer = PackageWriter::Create(m_target);
    for (std::size_t i = 0; i < many; ++i)
        writer->AddPackedPart("/p/" + std::to_string(i) + ".xml", "text/xml", {false, 0, 0, 0})->Close();
    writer->Finish();
    writer->Commit();
    int error = 0;
    zip_t* const other = zip_open(m_target.c_str(), ZIP_RDONLY, &error);
    ASSERT_NE(other, nullptr) << error;
    EXPECT_EQ(zip_get_num_entries(other, 0), many + 1);
    zip_discard(other);
    const auto package = PackageReader::Open(m_target);
    EXPECT_EQ(package->Parts().size(), many);
    EXPECT_NE(package->Find("/P/65999.xml"), nullptr);
}

TEST_F(StreamedPackageTest, HoldsWhatIsLargerThanFourGigabytes) {
    // Zeros are left out of the file, which takes no room then.
    class Sparse final : public ByteOutput {
    public:
        explicit Sparse(const std::filesystem::path& name)
            : m_name(name), m_file(open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {}
        ~Sparse() override { close(m_file); }
        const std::filesystem::path& Name() const override { return m_name; }
        std::filesystem::path Folder() const override { return m_name.parent_path(); }
        void Write(const void* bytes, std::size_t size) override {
            if (size < 1 << 20 && pwrite(m_file, bytes, size, m_end) != static_cast<ssize_t>(size))
                throw FileError(errno, m_name);
            m_end += static_cast<off_t>(size);
        }
        void Flush() override {}
        void Finish() override {}
        void Commit() override {}

    private:
        std::filesystem::path m_name;
        int m_file;
        off_t m_end = 0;
    };
    const ZipHeader large{"large", false, 1, std::uint64_t{4100} << 20, std::uint64_t{4100} << 20};
    const ZipHeader largeBehind{"large behind", false, 3, large.size, large.size};
    const ZipHeader behind{"behind", false, 2, 4, 4};
    {
        Sparse output(m_target);
        ZipWriter archive(output);
        const std::string zeros(1 << 20, '\0');
        const auto addLarge = [&](const ZipHeader& entry) {
            archive.Begin(entry);
            for (std::uint64_t done = 0; done != entry.size; done += zeros.size())
                archive.Write(zeros.data(), zeros.size());
            archive.End(entry);
        };
        addLarge(large);
        addLarge(largeBehind);
        archive.Begin(behind);
        archive.Write("text", 4);
        archive.End(behind);
        EXPECT_EQ(Failure([&] { archive.Finish([] { return true; }); }).first, E_ABORT);
        archive.Finish({});
    }
    const ZipArchive archive(m_target, m_target);
    ZipArchive::Walk walk(archive);
    ZipItem item;
    for (const ZipHeader& entry : {large, largeBehind, behind}) {
        ASSERT_TRUE(walk.Next(item));
        EXPECT_EQ(item.name + std::to_string(item.checksum), entry.name + std::to_string(entry.checksum));
        EXPECT_EQ(item.size, entry.size);
        EXPECT_EQ(item.storedSize, entry.storedSize);
        EXPECT_EQ(archive.ItemAt(item.position).header, item.header);
    }
    EXPECT_FALSE(walk.Next(item));
    std::size_t start = 0;
    EXPECT_EQ(archive.ReadItem(item, 100, "behind", start).substr(start, 4), "text");
    int error = 0;
    zip_t* const other = zip_open(m_target.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    ASSERT_NE(other, nullptr) << error;
    zip_stat_t stat{};
    EXPECT_EQ(zip_stat(other, "large", 0, &stat), 0);
    EXPECT_EQ(stat.size, large.size);
    zip_discard(other);
}

TEST_F(StreamedPackageTest, GoesIntoAPipe) {
    const auto write = [](PackageWriter& writer) {
        Add(writer, "/a.xml", Noise(700'000));
        Add(writer, "/stored.xml", Noise(700'000), PackageCompression::None);
        Add(writer, "/b.xml", hello);
        writer.AddRelationship("/", "t", "/b.xml");
        writer.Finish();
        writer.Commit();
    };
    write(*PackageWriter::Create(m_target));
    Ends ends;
    std::string read;
    std::thread reader([&] {
        char buffer[4096];
        for (ssize_t count; (count = ::read(ends.read, buffer, sizeof buffer)) > 0;)
            read.append(buffer, static_cast<std::size_t>(count));
    });
    {
        write(*PackageWriter::Create(std::make_unique<StreamOutput>(ends.write, "out", nullptr)));
        close(std::exchange(ends.write, -1));
    }
    reader.join();
    EXPECT_EQ(read, TemporaryFolder::Read(m_target)) << "the same calls give the same bytes";

    // Who reads the stream as it comes learns behind a part's bytes what the directory says of them.
    const ZipArchive archive(m_target, m_target);
    ZipArchive::Walk walk(archive);
    ZipItem item;
    ASSERT_TRUE(walk.Next(item));
    std::size_t start = 0;
    const std::string bytes = archive.ReadItem(item, 700'000 + 1000, item.name, start);
    RecordReader behind(std::string_view(bytes).substr(start + item.storedSize));
    EXPECT_EQ(behind.Take32(), descriptorMark);
    EXPECT_EQ(behind.Take32(), item.checksum);
    EXPECT_EQ(behind.Take32(), item.storedSize);
    EXPECT_EQ(behind.Take32(), item.size);
    EXPECT_EQ(behind.Take32(), localHeaderMark) << "of the next part";
    const auto flags = [&] {
        char directory[10], header[10];
        archive.ReadAt(item.position, directory, sizeof directory);
        archive.ReadAt(item.header, header, sizeof header);
        const std::uint16_t all = RecordReader({directory + 8, 2}).Take16();
        EXPECT_EQ(all, RecordReader({header + 6, 2}).Take16());
        return all;
    };
    EXPECT_EQ(flags(), sizesBehindFlag);
    ASSERT_TRUE(walk.Next(item));
    EXPECT_EQ(flags(), 0) << "the end of what is stored has to be known ahead";
}

TEST_F(StreamedPackageTest, DoesNotWaitForAReaderThatIsGoneOrAWriterThatStops) {
    const auto ignored = signal(SIGPIPE, SIG_IGN);
    for (const bool isGone : {true, false}) {
        Ends ends;
        if (isGone) ends.CloseReader();
        int asked = 0;
        const auto writer = PackageWriter::Create(
            std::make_unique<StreamOutput>(ends.write, "out", [&] { return !isGone && ++asked > 30; }));
        const auto [result, text] = Failure([&] {
            Add(*writer, "/a.xml", Noise(700'000), PackageCompression::None);
            writer->Finish();
        });
        EXPECT_TRUE(FAILED(result)) << isGone;
        EXPECT_THAT(text, HasSubstr("out: cannot be written"));
    }
    signal(SIGPIPE, ignored);
}
