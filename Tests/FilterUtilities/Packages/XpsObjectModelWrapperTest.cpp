#include "Support/FailureSweep.h"
#include "Support/MemoryStreams.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TestPictures.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <Package/PackageReader.h>
#include <Packages/XpsObjectModelWrapper.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using testing::AllOf;
using testing::HasSubstr;

using namespace TestPictures;

constexpr const char* fontName = "/Resources/Fonts/0123ABCD-0000-0000-0000-00000000CAFE.odttf";

XPS_COLOR Red() {
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_SRGB;
    color.value.sRGB = {255, 255, 0, 0};
    return color;
}

// Opens what the protected operations do.
struct Wrapper : XpsObjectModelWrapper {
    using XpsObjectModelWrapper::CreateRectanglePath;

    bool AddText(const wchar_t* text, bool firstPageOnly, int points = 12) {
        CXString words(text);
        return AddTextToPages(CXString(fontName), words, {10, 20}, Red(), L"DejaVu Sans", 1, points,
                              firstPageOnly);
    }
    bool AddImage(const std::string& file, bool firstPageOnly = false) {
        return AddImageToPages(L"/Resources/Images/Stamp", CXString(file.c_str()), {10, 20, 30, 40},
                               {0, 0, 8, 8}, 0.5F, firstPageOnly);
    }
};

class PackageWrapper : public testing::Test {
protected:
    CXString Path(const std::string& name) { return CXString((folder / name).c_str()); }
    // A job whose first document has two pages.
    void MakeJob(bool isOpenXps = false, const std::string& jobTicket = {}) {
        SampleJob job;
        job.documents = 2;
        job.isOpenXps = isOpenXps;
        job.jobTicket = jobTicket;
        job.pageTicket = SampleTicket("PageOrientation", "Landscape");
        job.Write(folder / "in.xps");
        ASSERT_EQ(wrapper.ReadPackageFromFile(Path("in.xps")), S_OK);
    }
    std::string Part(const std::string& name) {
        const auto reader = OvPlatform::PackageReader::Open(folder / "out.xps");
        return reader->Find(name) != nullptr ? reader->ReadPart(name, 1 << 24) : "(none)";
    }
    TemporaryFolder folder;
    Wrapper wrapper;
};

TEST_F(PackageWrapper, CountsAndStampsTheFirstDocumentsPages) {
    for (const bool isOpenXps : {false, true}) {
        MakeJob(isOpenXps);
        EXPECT_EQ(wrapper.GetTotalNumberOfPages(), 2u);
        ASSERT_TRUE(wrapper.AddText(L"A <b> \"&", false));
        ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
        const std::string before = TemporaryFolder::Read(folder / "in.xps");
        const auto reader = OvPlatform::PackageReader::Open(folder / "out.xps");
        for (const int page : {1, 2}) {
            const std::string name = SampleJob::PageName(1, page);
            const std::string markup = Part(name);
            EXPECT_THAT(markup, AllOf(HasSubstr("FontRenderingEmSize=\"16\""), HasSubstr("#FFFF0000"),
                                      HasSubstr("OriginX=\"10\" OriginY=\"20\""), HasSubstr("A &lt;b&gt; ")))
                << "of 12 points";
            EXPECT_LT(markup.find("<!-- 1."), markup.find("<Glyphs")) << "over what was there";
            const auto relationships = reader->Relationships(name);
            EXPECT_EQ(std::count_if(relationships.begin(), relationships.end(),
                                    [](const auto& one) { return one.targetPart == fontName; }),
                      1);
        }
        EXPECT_EQ(Part(SampleJob::PageName(2, 1)).find("Glyphs"), std::string::npos);
        ASSERT_NE(reader->Find(fontName), nullptr);
        EXPECT_EQ(reader->Find(fontName)->contentType, "application/vnd.ms-package.obfuscated-opentype");
        // The key is the name: what lies there is no font until it is taken off.
        const std::string key("\xFE\xCA\0\0\0\0\0\0\0\0\0\0\xCD\xAB\x23\x01", 16);
        std::string font = Part(fontName);
        EXPECT_NE(font.substr(0, 4), std::string("\0\1\0\0", 4));
        for (std::size_t i = 0; i < 4; ++i)
            font[i] = static_cast<char>(font[i] ^ key[i]);
        EXPECT_EQ(font.substr(0, 4), std::string("\0\1\0\0", 4));
        EXPECT_THAT(Part(SampleJob::PageName(1, 1)), HasSubstr(isOpenXps ? "openxps.org" : "microsoft.com"));
        EXPECT_EQ(TemporaryFolder::Read(folder / "in.xps"), before);
        EXPECT_FALSE(wrapper.CreateEmptyPackage()) << "where one stands";
    }
}

TEST_F(PackageWrapper, StampsTheFirstPageAloneAndNothingOnFailure) {
    MakeJob();
    EXPECT_FALSE(wrapper.AddText(L"", false)) << "of which no font is made";
    EXPECT_FALSE(wrapper.AddImage(folder / "missing.png"));
    EXPECT_FALSE(wrapper.AddImage(folder.Write("words.gif", "no picture")));
    ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_EQ(Part(SampleJob::PageName(1, 1)).find("Glyphs"), std::string::npos);
    ASSERT_TRUE(wrapper.AddText(L"first", true));
    ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part(SampleJob::PageName(1, 1)), HasSubstr("UnicodeString=\"first\""));
    EXPECT_EQ(Part(SampleJob::PageName(1, 2)).find("Glyphs"), std::string::npos);
    // The same part name twice is not written.
    ASSERT_TRUE(wrapper.AddText(L"second", false));
    EXPECT_FALSE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part(SampleJob::PageName(1, 1)), HasSubstr("UnicodeString=\"first\""));
}

TEST_F(PackageWrapper, PutsPicturesInAsTheyAreOrAsPng) {
    const Rows<std::string, std::string, std::string, bool> rows{
        {"a.png", Png(8, 8), "/Resources/Images/Stamp.png", true},
        {"a.JPG", "\xFF\xD8 as it is", "/Resources/Images/Stamp.jpg", true},
        {"a.bmp", Bmp(8, 8), "/Resources/Images/Stamp.png", false},
        {"a.gif", Gif(8, 8, GifImage(8, 8, 0) + GifImage(8, 8, 1)), "/Resources/Images/Stamp.png", false},
        {"a.jpeg", "\xFF\xD8 as it is", "/Resources/Images/Stamp.peg", true},
    };
    for (const auto& [name, picture, part, isAsItIs] : rows) {
        MakeJob();
        const std::string file = folder.Write(name, picture);
        ASSERT_TRUE(wrapper.AddImage(file)) << name;
        ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps"))) << name;
        const std::string bytes = Part(part);
        EXPECT_EQ(bytes == TemporaryFolder::Read(file), isAsItIs) << name;
        if (!isAsItIs) {
            EXPECT_EQ(bytes.substr(0, 4), "\x89PNG") << name;
        }
        EXPECT_THAT(Part(SampleJob::PageName(1, 2)),
                    AllOf(HasSubstr("Viewbox=\"0,0,8,8\""), HasSubstr("Viewport=\"10,20,30,40\""),
                          HasSubstr("Opacity=\"0.5\""), HasSubstr("ViewportUnits=\"Absolute\"")));
    }
}

TEST_F(PackageWrapper, DrawsARectangleFromItsTopLeftDownwards) {
    MakeJob();
    const XPS_RECT rectangle{1, 2, 30, 40};
    CComPtr<IXpsOMPath> path;
    CComPtr<IXpsOMGeometry> geometry;
    CComPtr<IXpsOMGeometryFigureCollection> figures;
    CComPtr<IXpsOMGeometryFigure> figure;
    ASSERT_EQ(wrapper.CreateRectanglePath(&rectangle, &path), S_OK);
    ASSERT_EQ(path->GetGeometryLocal(&geometry), S_OK);
    ASSERT_EQ(geometry->GetFigures(&figures), S_OK);
    ASSERT_EQ(figures->GetAt(0, &figure), S_OK);
    XPS_POINT start{};
    BOOL isClosed = FALSE;
    BOOL isFilled = FALSE;
    EXPECT_EQ(figure->GetStartPoint(&start), S_OK);
    EXPECT_EQ(figure->GetIsClosed(&isClosed), S_OK);
    EXPECT_EQ(figure->GetIsFilled(&isFilled), S_OK);
    EXPECT_TRUE(start.x == 1 && start.y == 2 && isClosed && isFilled);
    FLOAT points[6] = {};
    UINT32 count = 6;
    EXPECT_EQ(figure->GetSegmentData(&count, points), S_OK);
    EXPECT_THAT(points, testing::ElementsAre(1, 42, 31, 42, 31, 2));
    EXPECT_EQ(wrapper.CreateRectanglePath(nullptr, &path), E_POINTER);
}

TEST_F(PackageWrapper, MakesAPackageWithPagesAndATicketOfItsOwn) {
    IXpsOMPage* none = nullptr;
    EXPECT_EQ(wrapper.AddEmptyPage(&none, L"en-US", 816, 1056), 0) << "without a package";
    EXPECT_FALSE(wrapper.WritePackageToFile(Path("out.xps")));
    ASSERT_TRUE(wrapper.CreateEmptyPackage());
    EXPECT_FALSE(wrapper.CreateEmptyPackage());
    CComPtr<IXpsOMPage> page;
    EXPECT_EQ(wrapper.AddEmptyPage(&page, L"en-US", 816, 1056), 1);
    EXPECT_TRUE(page);
    page.Release();
    EXPECT_EQ(wrapper.AddEmptyPage(&page, L"en-US", -5, 1056), 0);
    page.Release();
    EXPECT_EQ(wrapper.AddEmptyPage(&page, L"en-US", 300, 400), 3) << "the number of a failed page is used up";
    EXPECT_EQ(wrapper.GetTotalNumberOfPages(), 0u) << "of a package that was not read";
    EXPECT_TRUE(wrapper.AddText(L"on new pages", false));

    EXPECT_EQ(wrapper.TryToGetPtrToJobLevelPrintTicket(), nullptr);
    PrintTicketXmlDocument* const ticket = wrapper.TryToGetPtrToOrCreateJobLevelPrintTicket();
    ASSERT_NE(ticket, nullptr);
    EXPECT_EQ(wrapper.TryToGetPtrToOrCreateJobLevelPrintTicket(), ticket);
    PrintTicketXmlDocument* second = nullptr;
    EXPECT_FALSE(wrapper.AddEmptyJobLevelPrintTicket(&second));
    EXPECT_FALSE(wrapper.TryToGetUniquePtrToPageLevelPrintTicket(0));
    ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part("/Job_PT.xml"), HasSubstr("PrintTicket"));
    EXPECT_THAT(Part("/Documents/1/FixedDocument.fdoc"),
                AllOf(HasSubstr("Pages/Page_1.fpage"), HasSubstr("Pages/Page_3.fpage"), HasSubstr("300")));
    EXPECT_THAT(Part("/Documents/1/Pages/Page_3.fpage"), HasSubstr("on new pages"));

    // Once more, over itself: what was made is read, and its ticket replaced.
    Wrapper again;
    ASSERT_EQ(again.ReadPackageFromFile(Path("out.xps")), S_OK);
    EXPECT_EQ(again.GetTotalNumberOfPages(), 2u);
    ASSERT_NE(again.TryToGetPtrToJobLevelPrintTicket(), nullptr);
    EXPECT_TRUE(again.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part("/Job_PT.xml"), HasSubstr("PrintTicket"));
}

TEST_F(PackageWrapper, GivesTheTicketsOfTheJobAndOfPages) {
    MakeJob(false, SampleTicket("JobDuplexAllDocumentsContiguously", "OneSided"));
    PrintTicketXmlDocument* const ticket = wrapper.TryToGetPtrToJobLevelPrintTicket();
    ASSERT_NE(ticket, nullptr);
    EXPECT_EQ(ticket->SetFeatureOption(L"JobDuplexAllDocumentsContiguously", true, L"TwoSidedLongEdge", true),
              S_OK);
    EXPECT_EQ(wrapper.TryToGetPtrToJobLevelPrintTicket(), ticket);
    const auto page = wrapper.TryToGetUniquePtrToPageLevelPrintTicket(1);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->FeaturePresent(L"PageOrientation", true, nullptr), S_OK);
    EXPECT_FALSE(wrapper.TryToGetUniquePtrToPageLevelPrintTicket(2));
    ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part("/Job_PT.xml"), HasSubstr("TwoSidedLongEdge"));
    EXPECT_EQ(Part("/Metadata/Job_PT.xml"), "(none)");

    // The ticket that was handed out stays the object's, whichever package comes next, and goes into it.
    MakeJob(false, SampleTicket("JobDuplexAllDocumentsContiguously", "OneSided"));
    EXPECT_EQ(wrapper.GetTotalNumberOfPages(), 2u);
    EXPECT_EQ(wrapper.TryToGetPtrToOrCreateJobLevelPrintTicket(), ticket);
    PrintTicketXmlDocument* second = nullptr;
    EXPECT_FALSE(wrapper.AddEmptyJobLevelPrintTicket(&second));
    ASSERT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part("/Job_PT.xml"), HasSubstr("TwoSidedLongEdge"));

    MakeJob(false, "<no ticket");
    Wrapper damaged;
    ASSERT_EQ(damaged.ReadPackageFromFile(Path("in.xps")), S_OK);
    EXPECT_THROW(damaged.TryToGetPtrToJobLevelPrintTicket(), CPComException);
    EXPECT_EQ(damaged.ReadPackageFromFile(Path("missing.xps")), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(damaged.GetTotalNumberOfPages(), 0u);
    EXPECT_FALSE(damaged.AddText(L"nothing", false));
}

// Pages ahead of it have been stamped, and nothing is written unless it is asked for.
TEST_F(PackageWrapper, FailsAtAPageThatCannotBeRead) {
    ZipItems items = SampleJob().Items();
    items[SampleJob::PageName(1, 2).substr(1)] = "<FixedPage";
    WriteZip(folder / "in.xps", items);
    ASSERT_EQ(wrapper.ReadPackageFromFile(Path("in.xps")), S_OK);
    EXPECT_EQ(wrapper.GetTotalNumberOfPages(), 2u);
    EXPECT_FALSE(wrapper.AddText(L"stamp", false));
    EXPECT_FALSE(wrapper.AddImage(folder.Write("a.png", Png(8, 8))));
    EXPECT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part(SampleJob::PageName(1, 1)), HasSubstr("\"stamp\""));
    EXPECT_EQ(Part(SampleJob::PageName(1, 2)), "<FixedPage");

    // A job without a ticket gets one where it is asked for.
    EXPECT_EQ(wrapper.TryToGetPtrToJobLevelPrintTicket(), nullptr);
    EXPECT_NE(wrapper.TryToGetPtrToOrCreateJobLevelPrintTicket(), nullptr);
    EXPECT_TRUE(wrapper.WritePackageToFile(Path("out.xps")));
    EXPECT_THAT(Part("/Job_PT.xml"), HasSubstr("PrintTicket"));
}

// A stamped package: the file that is written is the old one or the new one.
struct StampedFile {
    TemporaryFolder folder;

    StampedFile() {
        SampleJob().Write(folder / "in.xps");
        folder.Write("out.xps", "before");
    }
    std::string State() const {
        EXPECT_EQ(folder.Names().size(), 2u);
        const std::string bytes = TemporaryFolder::Read(folder / "out.xps");
        return bytes == "before" ? bytes
                                 : OvPlatform::PackageReader::Open(folder / "out.xps")
                                       ->ReadPart(SampleJob::PageName(1, 2), 1 << 20);
    }
};

TEST(StampedPackage, EachFailingCallIsToldAndLeavesTheOldFileOrTheNew) {
    FailureSweep<StampedFile> sweep(
        [] { return std::make_unique<StampedFile>(); },
        [](StampedFile& world) -> SweptAnswer {
            Wrapper wrapper;
            const bool isDone =
                SUCCEEDED(wrapper.ReadPackageFromFile(CXString((world.folder / "in.xps").c_str()))) &&
                wrapper.AddText(L"stamp", false) &&
                wrapper.WritePackageToFile(CXString((world.folder / "out.xps").c_str()));
            return isDone ? S_OK : E_FAIL;
        });
    sweep.Run("a stamped package");
}

} // namespace
