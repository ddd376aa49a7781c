// What an element tells of its picture.

#include "FilterUtilities/Annotation/AnnotationSupport.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestPictures.h"

#include <atlcomcli.h>
#include <objbase.h>

namespace {

/// With dots to the metre.
std::string Bitmap(unsigned int width, unsigned int height, unsigned int horizontal, unsigned int vertical) {
    return TestPictures::Bmp(width, height, horizontal).replace(42, 4, TestPictures::Little(vertical, 4));
}

class Picture : public InApartment<> {
protected:
    /// An element with a file of that content.
    void Take(const std::string& bytes) {
        const CXString file(m_folder.Write("picture.png", bytes).string().c_str());
        m_annotations.Read(JobWith({TextElement(file, L"", VAL_ANNOTATION_TYPE_PICTURE)}));
    }

    TemporaryFolder m_folder;
    OpenAnnotations m_annotations;
};

TEST_F(Picture, HasTheSizeThatItsResolutionMakes) {
    // 3,937 dots to the metre are 100 to the inch, and half a millionth less.
    const Rows<unsigned int, unsigned int, float, float, float, float> cases{{3937, 3937, 100, 100, 96, 48},
                                                                             {3937, 7874, 100, 200, 96, 24}};
    for (const auto& [horizontal, vertical, hResolution, vResolution, width, height] : cases) {
        Take(Bitmap(100, 50, horizontal, vertical));
        EXPECT_FALSE(m_annotations.GetSelected()->isImageParsed);
        EXPECT_NEAR(m_annotations.GetImageHeightInXpsUnits(), height, 0.001);
        EXPECT_NEAR(m_annotations.GetHResolution(), hResolution, 0.01);
        EXPECT_NEAR(m_annotations.GetVResolution(), vResolution, 0.01);
        EXPECT_FALSE(m_annotations.GetSelected()->isImageParsed) << "the width remembers, alone";
        EXPECT_NEAR(m_annotations.GetImageWidthInXpsUnits(), width, 0.001);
        EXPECT_TRUE(m_annotations.GetSelected()->isImageParsed);
        m_annotations.SetImageFileName(L"gone");
        EXPECT_NEAR(m_annotations.GetImageWidthInXpsUnits(), width, 0.001) << "it is not read again";
    }
}

TEST_F(Picture, ThatCannotBeReadHasNoSize) {
    m_annotations.Read({});
    EXPECT_EQ(m_annotations.ParseImageFile(), E_INVALIDARG);
    EXPECT_EQ(m_annotations.ParseImageFile(nullptr), E_INVALIDARG);
    for (const std::string& bytes :
         {std::string("a text"), std::string(), Bitmap(65'535, 1, 0, 0).substr(0, 60)}) {
        Take(bytes);
        EXPECT_TRUE(FAILED(m_annotations.ParseImageFile())) << bytes.size();
        EXPECT_EQ(m_annotations.GetImageWidthInXpsUnits() + m_annotations.GetHResolution(), 0);
        EXPECT_FALSE(m_annotations.GetSelected()->isImageParsed) << "it may be there the next time";
    }
}

TEST_F(Picture, ComesFromAStreamToo) {
    const std::string bytes = Bitmap(96, 192, 7874, 3937);
    CComPtr<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    ASSERT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
    m_annotations.Read({});
    EXPECT_EQ(m_annotations.ParseImageFile(stream), S_OK);
    EXPECT_NEAR(m_annotations.GetImageHeightInXpsUnits(), 192 * 96 / 100.0, 0.001);
}

TEST_F(Picture, WithoutAResolutionHas300DotsToTheInch) {
    SkipOnWindows("where such a picture has the resolution of the screen");
    for (const unsigned int horizontal : {0U, 3937U}) {
        Take(Bitmap(100, 50, horizontal, 0));
        EXPECT_NEAR(m_annotations.GetImageWidthInXpsUnits(), 32, 0.001);
        EXPECT_NEAR(m_annotations.GetImageHeightInXpsUnits(), 16, 0.001);
        EXPECT_EQ(m_annotations.GetHResolution() + m_annotations.GetVResolution(), 600);
    }
}

} // namespace
