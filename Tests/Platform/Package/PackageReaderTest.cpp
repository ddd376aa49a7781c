#include "Platform/Package/ZipBuilder.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <Package/PackageReader.h>
#include <Package/PackageWriter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <msopc.h>

#include <thread>

using namespace OvPlatform;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// The raw deflate stream of "hello hello hello hello\n".
const std::string hello = "hello hello hello hello\n";
const std::string HelloDeflated("\xCB\x48\xCD\xC9\xC9\x57\xC8\x40\x27\xB9\x00", 11);

struct Failure {
    HRESULT result = S_OK;
    std::string text;
};

// Opens the package and reads all there is.
Failure ReadAll(const std::filesystem::path& file, const PackageLimits& limits = {}) {
    try {
        const auto package = PackageReader::Open(file, limits);
        std::vector<std::string> sources{"/"};
        for (const PackagePart& part : package->Parts()) {
            package->ReadPart(part.name, 1 << 20);
            sources.push_back(part.name);
        }
        for (const std::string& source : sources)
            for (const PackageRelationship& relationship : package->Relationships(source))
                if (!relationship.external) RequireTarget(*package, source, relationship);
        return {};
    } catch (const PackageError& error) {
        return {error.Result(), error.what()};
    }
}

std::string Rel(const std::string& attributes) {
    return relsHead + "<Relationship " + attributes + "/></Relationships>";
}

// A package of nothing but content types, and one with the relationships of its root.
std::vector<ZipEntry> Types(const std::string& xml) { return {{"[Content_Types].xml", xml}}; }
std::vector<ZipEntry> Rels(const std::string& xml) { return WithTypes({{"_rels/.rels", xml}}); }

class PackageReaderTest : public testing::Test {
protected:
    std::shared_ptr<const PackageReader> Open(const std::vector<ZipEntry>& entries,
                                              const PackageLimits& limits = {}) {
        return PackageReader::Open(m_folder.Write("p.xps", BuildZip(entries)), limits);
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(PackageReaderTest, ListsAndReadsParts) {
    const auto package = Open(WithTypes({
        {"Dir/", ""},
        {"Dir/a.xml", "stored"},
        {"hello.Xml", HelloDeflated, 8, 8, 24u, 0x0B598800u},
        {"special.XML", "s"},
        {"big.xml", "64", 0, 0, {}, {}, true},
        {"unknown.dat", "no part"},
        {"[trash]/0000.dat", "no part"},
        {"\xC3\xA9 e.xml", "encoded"},
        {"Dir/_rels/a.xml.rels",
         relsHead + R"(<Relationship Id="r" Type="t" Target="../HELLO.xml"/></Relationships>)"},
        {"_rels/.rels", Rel("Id='x' Type='t' Target='http://x/' TargetMode='External'")},
    }));
    std::vector<std::string> names;
    for (const PackagePart& part : package->Parts())
        names.push_back(part.name + " " + part.contentType);
    EXPECT_THAT(names, ElementsAre("/Dir/a.xml text/xml", "/hello.Xml text/xml", "/special.XML special",
                                   "/big.xml text/xml", "/%C3%A9%20e.xml text/xml"));
    EXPECT_EQ(package->ReadPart("/HELLO.XML", 100), hello);
    EXPECT_EQ(package->ReadPart("/big.xml", 100), "64");
    EXPECT_EQ(package->Find("/hello.xml")->compression, PackageCompression::Normal);
    EXPECT_EQ(package->Find("/Dir/A.xml")->compression, PackageCompression::None);
    EXPECT_EQ(package->Find("/unknown.dat"), nullptr);
    EXPECT_THROW(package->OpenPart("/none.xml"), PackageError);
    EXPECT_THROW(package->ReadPart("/hello.xml", 23), PackageError);

    const auto relationships = package->Relationships("/dir/A.xml");
    ASSERT_EQ(relationships.size(), 1u);
    EXPECT_EQ(relationships[0].targetPart, "/HELLO.xml");
    EXPECT_EQ(RequireTarget(*package, "/Dir/a.xml", relationships[0]).name, "/hello.Xml");
    EXPECT_TRUE(package->Relationships("/")[0].external);
    EXPECT_TRUE(package->Relationships("/hello.xml").empty());
}

TEST_F(PackageReaderTest, RelationshipsInTheSameWordsLeadElsewhereFromElsewhere) {
    const std::string near =
        R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
        R"(<Relationship Id="a" Type="t" Target="x.xml"/></Relationships>)";
    std::string own = near;
    own.replace(own.find("x.xml"), 5, "#top");
    const auto package = Open(WithTypes({{"a/1.xml", ""},
                                         {"a/2.xml", ""},
                                         {"a/3.xml", ""},
                                         {"a/4.xml", ""},
                                         {"b/1.xml", ""},
                                         {"a/_rels/1.xml.rels", near},
                                         {"a/_rels/2.xml.rels", near},
                                         {"a/_rels/3.xml.rels", own},
                                         {"a/_rels/4.xml.rels", own},
                                         {"b/_rels/1.xml.rels", near}}));
    const auto target = [&](const char* source) { return package->Relationships(source).at(0).targetPart; };
    EXPECT_EQ(target("/a/1.xml"), "/a/x.xml");
    EXPECT_EQ(target("/a/2.xml"), "/a/x.xml");
    EXPECT_EQ(target("/b/1.xml"), "/b/x.xml");
    EXPECT_EQ(target("/a/3.xml"), "/a/3.xml");
    EXPECT_EQ(target("/a/4.xml"), "/a/4.xml");
}

TEST_F(PackageReaderTest, JoinsPieces) {
    const auto package = Open({
        {"[Content_Types].xml/[1].last.piece", typesXml.substr(100)},
        {"a.xml/[2].LAST.piece", "ghi"},
        {"A.xml/[0].piece", "abc"},
        {"[content_types].xml/[0].piece", typesXml.substr(0, 100)},
        {"_rels/.rels/[0].last.piece", Rel("Id='r' Type='t' Target='a.xml'")},
        {"a.xml/[1].piece", HelloDeflated, 8, 0, 24u, 0x0B598800u},
    });
    ASSERT_EQ(package->Parts().size(), 1u);
    const std::string whole = "abc" + hello + "ghi";
    EXPECT_EQ(package->Parts()[0].size, whole.size());
    EXPECT_TRUE(package->Parts()[0].interleaved);
    EXPECT_EQ(package->ReadPart("/a.xml", 100), whole);
    EXPECT_EQ(package->Relationships("/")[0].targetPart, "/a.xml");

    const auto stream = package->OpenPart("/a.xml");
    for (const std::size_t position : {28u, 5u, 5u, 2u, 0u, 3u, 29u, 27u, 30u, 1u}) {
        stream->Seek(position);
        EXPECT_EQ(stream->Position(), position);
        std::string rest;
        char buffer[7];
        while (const std::size_t count = stream->Read(buffer, sizeof buffer))
            rest.append(buffer, count);
        EXPECT_EQ(rest, whole.substr(position)) << position;
        stream->Seek(position);
    }
    EXPECT_THROW(stream->Seek(31), PackageError);
}

TEST_F(PackageReaderTest, RefusesDamagedPackages) {
    const std::string name = "x.xml";
    const Rows<const char*, std::vector<ZipEntry>, HRESULT, const char*> rows{
        {"no content types", {{"a.xml", "x"}}, OPC_E_MISSING_CONTENT_TYPES, "no [Content_Types].xml"},
        {"types malformed", Types(typesHead), OPC_E_NONCONFORMING_CONTENT_TYPES_XML,
         "/[Content_Types].xml: "},
        {"types with DTD", Types("<!DOCTYPE Types [<!ENTITY a 'b'>]>" + typesXml),
         OPC_E_NONCONFORMING_CONTENT_TYPES_XML, "document type declaration"},
        {"types of another root", Types("<Types/>"), OPC_E_INVALID_CONTENT_TYPE_XML, "the root"},
        {"extension twice",
         Types(typesHead +
               R"(<Default Extension="a" ContentType="t"/><Default Extension="A" ContentType="t"/></Types>)"),
         OPC_E_DUPLICATE_DEFAULT_EXTENSION, "'A' stands twice"},
        {"override twice",
         Types(
             typesHead +
             R"(<Override PartName="/a" ContentType="t"/><Override PartName="/A" ContentType="t"/></Types>)"),
         OPC_E_DUPLICATE_OVERRIDE_PART, "'/A' stands twice"},
        {"override that is no name", Types(typesHead + R"(<Override PartName="a" ContentType="t"/></Types>)"),
         OPC_E_INVALID_OVERRIDE_PART_NAME, "slash"},
        {"aliased by case", WithTypes({{name, "1"}, {"X.xml", "2"}}), OPC_E_DUPLICATE_PART,
         "/X.xml: the part stands twice in the package, the other time as '/x.xml'"},
        {"aliased by a space", WithTypes({{"x y.xml", "1"}, {"x%20y.xml", "2"}}), OPC_E_DUPLICATE_PART,
         "stands twice"},
        {"aliased by encoding", WithTypes({{"x.xml", "1"}, {"%78.xml", "2"}}), OPC_E_NONCONFORMING_URI,
         "percent-encoded"},
        {"backslash", WithTypes({{"a\\x.xml", "1"}}), OPC_E_NONCONFORMING_URI, "backslash"},
        {"leaves the package", WithTypes({{"../x.xml", "1"}}), OPC_E_NONCONFORMING_URI, "out of the package"},
        {"extends a name", WithTypes({{"a.xml/b.xml", "1"}, {"A.xml", "2"}}), OPC_E_DUPLICATE_PART,
         "extends the name"},
        {"piece twice", WithTypes({{"a.xml/[0].piece", "1"}, {"a.xml/[0].last.piece", "2"}}),
         OPC_E_DUPLICATE_PIECE, "piece 0"},
        {"first piece missing", WithTypes({{"a.xml/[1].last.piece", "1"}}), OPC_E_MISSING_PIECE, "piece 0"},
        {"last piece missing", WithTypes({{"a.xml/[0].piece", "1"}}), OPC_E_MISSING_PIECE, "last piece"},
        {"pieces after the last", WithTypes({{"a.xml/[0].last.piece", "1"}, {"a.xml/[1].piece", "2"}}),
         OPC_E_INVALID_PIECE, "after the last"},
        {"piece number", WithTypes({{"a.xml/[00].piece", "1"}}), OPC_E_INVALID_PIECE, "number"},
        {"encrypted", WithTypes({{name, "1", 0, 1}}), OPC_E_ZIP_UNSUPPORTEDARCHIVE,
         "/x.xml: it is encrypted"},
        {"method", WithTypes({{name, "1", 12}}), OPC_E_ZIP_UNSUPPORTEDARCHIVE, "compression method"},
        {"checksum", WithTypes({{name, "1", 0, 0, {}, 7u}}), OPC_E_ZIP_CORRUPTED_ARCHIVE, "wrong checksum"},
        {"deflate", WithTypes({{name, "\xFF\xFF\xFF\xFF", 8, 0, 24u, 1u}}), OPC_E_ZIP_DECOMPRESSION_FAILED,
         "compressed data"},
        {"inflates to more", WithTypes({{name, HelloDeflated, 8, 0, 23u, 0x0B598800u}}),
         OPC_E_ZIP_INCORRECT_DATA_SIZE, "more than"},
        {"bomb by declaration", WithTypes({{name, HelloDeflated, 8, 0, 0x80000000u, 1u}}),
         OPC_E_UNSUPPORTED_PACKAGE, "times its stored size"},
        {"too large", WithTypes({{name, "1", 0, 0, {}, {}, true, std::uint64_t{1} << 40}}),
         OPC_E_UNSUPPORTED_PACKAGE, "more than 4294967296"},
        {"bytes of two parts", WithTypes({{name, std::string(9000, '1'), 0, 0, {}, {}, false, 0, "y.xml"}}),
         OPC_E_ZIP_INCONSISTENT_DIRECTORY, "y.xml: the parts up to here are stored in more bytes"},
        {"rels malformed", Rels(relsHead), OPC_E_NONCONFORMING_RELS_XML, "/_rels/.rels: "},
        {"rels with another element", Rels(relsHead + "<X/></Relationships>"), OPC_E_INVALID_RELS_XML, "X"},
        {"rels of another type",
         {{"[Content_Types].xml",
           typesHead + R"(<Default Extension="rels" ContentType="text/xml"/></Types>)"},
          {"_rels/.rels", ""}},
         OPC_E_UNEXPECTED_CONTENT_TYPE,
         "'text/xml'"},
        {"no id", Rels(Rel("Type='t' Target='a'")), OPC_E_INVALID_RELATIONSHIP_ID, "no Id"},
        {"no target", Rels(Rel("Id='r' Type='t'")), OPC_E_INVALID_RELATIONSHIP_TARGET, "'r'"},
        {"target mode", Rels(Rel("Id='r' Type='t' Target='a' TargetMode='x'")),
         OPC_E_INVALID_RELATIONSHIP_TARGET_MODE, "'x'"},
        {"target leaves", Rels(Rel("Id='r' Type='t' Target='../a'")), OPC_E_INVALID_RELATIONSHIP_TARGET,
         "out of"},
        {"target missing", Rels(Rel("Id='r' Type='t' Target='a.xml'")), OPC_E_NO_SUCH_PART,
         "'/a.xml', which is not in the package"},
        {"id twice",
         Rels(relsHead + "<Relationship Id='r' Type='t' Target='a'/><Relationship "
                         "Id='r' Type='t' Target='b'/></Relationships>"),
         OPC_E_DUPLICATE_RELATIONSHIP, "twice"},
    };
    for (const auto& [what, entries, result, text] : rows) {
        const Failure failure = ReadAll(m_folder.Write("p.xps", BuildZip(entries)));
        EXPECT_EQ(failure.result, result) << what << ": " << failure.text;
        EXPECT_THAT(failure.text, HasSubstr(text)) << what;
        EXPECT_EQ(failure.text.find('\n'), std::string::npos) << "one line: " << failure.text;
    }
}

TEST_F(PackageReaderTest, RefusesWhatIsNoArchive) {
    const std::string good = BuildZip(WithTypes({{"a.xml", std::string(500, 'a')}}));
    const Rows<std::string, HRESULT, const char*> rows{
        {"", OPC_E_ZIP_CORRUPTED_ARCHIVE, "the file is empty"},
        {"no zip at all", OPC_E_ZIP_CORRUPTED_ARCHIVE, "not a zip archive"},
        {good.substr(0, good.size() - 30), OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY, "cut short"},
    };
    for (const auto& [bytes, result, text] : rows) {
        const Failure failure = ReadAll(m_folder.Write("p.xps", bytes));
        EXPECT_EQ(failure.result, result) << text;
        EXPECT_THAT(failure.text, HasSubstr(text));
    }
    EXPECT_EQ(ReadAll(m_folder / "none.xps").result, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(ReadAll(m_folder.Path()).result, HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
}

// Every byte matters or does not; none may lead to a crash or to bytes other than those packed.
TEST_F(PackageReaderTest, SurvivesAnyDamagedByte) {
    const std::string good =
        BuildZip(WithTypes({{"a.xml", HelloDeflated, 8, 8, 24u, 0x0B598800u}, {"b.xml", "text"}}));
    for (std::size_t i = 0; i < good.size(); ++i) {
        std::string bytes = good;
        bytes[i] = static_cast<char>(~bytes[i]);
        const auto file = m_folder.Write("p.xps", bytes);
        if (FAILED(ReadAll(file).result)) continue;
        const auto package = PackageReader::Open(file);
        for (const auto& [part, text] :
             {std::pair("/a.xml", hello), std::pair("/b.xml", std::string("text"))})
            if (package->Find(part)) {
                EXPECT_EQ(package->ReadPart(part, 100), text) << "byte " << i;
            }
    }
}

TEST_F(PackageReaderTest, HoldsToItsLimits) {
    const auto entries =
        WithTypes({{"a.xml", "12345"}, {"b.xml", "12345"}, {"_rels/.rels", relsHead + "</Relationships>"}});
    const auto open = [&](auto field, auto value) {
        PackageLimits limits;
        limits.*field = value;
        return ReadAll(m_folder.Write("p.xps", BuildZip(entries)), limits).text;
    };
    EXPECT_THAT(open(&PackageLimits::maxItems, 3u), HasSubstr("more than 3 items"));
    EXPECT_THAT(open(&PackageLimits::maxPartSize, 4u), HasSubstr("more than 4 bytes"));
    EXPECT_THAT(open(&PackageLimits::maxPackageSize, typesXml.size() + 9), HasSubstr("the package inflates"));
    EXPECT_THAT(open(&PackageLimits::maxXmlPartSize, 100u), HasSubstr("[Content_Types].xml"));
    EXPECT_EQ(open(&PackageLimits::maxItems, 4u), "");
}

TEST_F(PackageReaderTest, ReadsPartsOnSeveralThreads) {
    const std::string text[] = {std::string(300000, 'a'), std::string(200000, 'b')};
    const auto package = Open(WithTypes({{"0.xml", text[0]}, {"1.xml", text[1]}}));
    std::vector<std::thread> threads;
    std::string read[4];
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            const auto stream = package->OpenPart(i % 2 ? "/1.xml" : "/0.xml");
            char buffer[1000];
            while (const std::size_t count = stream->Read(buffer, sizeof buffer))
                read[i].append(buffer, count);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(read[i], text[i % 2]);
}
