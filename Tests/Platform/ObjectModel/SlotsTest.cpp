// The published order of the model's calls: of each interface those at which a slip would show.

#include "Support/VirtualSlots.h"

#include <windows.h>
#include <gtest/gtest.h>
#include <xpsobjectmodel.h>
#include <xpsobjectmodel_1.h>

#include <utility>

namespace {

TEST(ModelInterfaces, StandInTheirPublishedSlots) {
    const std::pair<std::size_t, std::size_t> slots[] = {
        {4, SlotOf(&IXpsOMShareable::GetType)},
        {4, SlotOf(&IXpsOMPart::SetPartName)},
        {7, SlotOf(&IXpsOMMatrixTransform::Clone)},
        {8, SlotOf(&IXpsOMDashCollection::Append)},
        {7, SlotOf(&IXpsOMGeometryFigure::SetSegments)},
        {17, SlotOf(&IXpsOMGeometryFigure::Clone)},
        {8, SlotOf(&IXpsOMGeometryFigureCollection::Append)},
        {13, SlotOf(&IXpsOMGeometry::Clone)},
        {6, SlotOf(&IXpsOMBrush::SetOpacity)},
        {9, SlotOf(&IXpsOMSolidColorBrush::Clone)},
        {16, SlotOf(&IXpsOMTileBrush::GetTileMode)},
        {22, SlotOf(&IXpsOMImageBrush::Clone)},
        {23, SlotOf(&IXpsOMVisualBrush::Clone)},
        {8, SlotOf(&IXpsOMGradientStop::Clone)},
        {8, SlotOf(&IXpsOMGradientStopCollection::Append)},
        {21, SlotOf(&IXpsOMLinearGradientBrush::Clone)},
        {23, SlotOf(&IXpsOMRadialGradientBrush::Clone)},
        {16, SlotOf(&IXpsOMVisual::SetOpacity)},
        {29, SlotOf(&IXpsOMVisual::SetLanguage)},
        {3, SlotOf(&IXpsOMGlyphsEditor::ApplyEdits)},
        {5, SlotOf(&IXpsOMGlyphsEditor::SetUnicodeString)},
        {20, SlotOf(&IXpsOMGlyphsEditor::SetDeviceFontName)},
        {43, SlotOf(&IXpsOMGlyphs::SetOrigin)},
        {45, SlotOf(&IXpsOMGlyphs::SetFontRenderingEmSize)},
        {52, SlotOf(&IXpsOMGlyphs::SetFillBrushLocal)},
        {56, SlotOf(&IXpsOMGlyphs::Clone)},
        {32, SlotOf(&IXpsOMPath::SetGeometryLocal)},
        {63, SlotOf(&IXpsOMPath::SetFillBrushLocal)},
        {66, SlotOf(&IXpsOMPath::Clone)},
        {8, SlotOf(&IXpsOMVisualCollection::Append)},
        {12, SlotOf(&IXpsOMDictionary::Clone)},
        {42, SlotOf(&IXpsOMCanvas::Clone)},
        {6, SlotOf(&IXpsOMFontResource::SetContent)},
        {7, SlotOf(&IXpsOMImageResource::GetImageType)},
        {6, SlotOf(&IXpsOMColorProfileResource::SetContent)},
        {6, SlotOf(&IXpsOMPrintTicketResource::SetContent)},
        {6, SlotOf(&IXpsOMRemoteDictionaryResource::SetDictionary)},
        {7, SlotOf(&IXpsOMDocumentStructureResource::SetContent)},
        {9, SlotOf(&IXpsOMFontResourceCollection::GetByPartName)},
        {9, SlotOf(&IXpsOMImageResourceCollection::GetByPartName)},
        {6, SlotOf(&IXpsOMPartResources::GetRemoteDictionaryResources)},
        {6, SlotOf(&IXpsOMPage::GetVisuals)},
        {24, SlotOf(&IXpsOMPage::Write)},
        {26, SlotOf(&IXpsOMPage::Clone)},
        {4, SlotOf(&IXpsOMPageReference::GetPage)},
        {17, SlotOf(&IXpsOMPageReference::CollectPartResources)},
        {12, SlotOf(&IXpsOMDocument::Clone)},
        {8, SlotOf(&IXpsOMDocumentSequence::SetPrintTicketResource)},
        {38, SlotOf(&IXpsOMCoreProperties::Clone)},
        {12, SlotOf(&IXpsOMPackage::WriteToStream)},
        {7, SlotOf(&IXpsOMPackageWriter::IsClosed)},
        {16, SlotOf(&IXpsOMObjectFactory::CreatePageFromStream)},
        {29, SlotOf(&IXpsOMObjectFactory::CreateFontResource)},
        {39, SlotOf(&IXpsOMObjectFactory::CreateReadOnlyStreamOnFile)},
        {48, SlotOf(&IXpsOMObjectFactory1::CreatePackageFromFile1)},
        {51, SlotOf(&IXpsOMObjectFactory1::CreateRemoteDictionaryResourceFromStream1)},
        {15, SlotOf(&IXpsOMPackage1::WriteToStream1)},
        {28, SlotOf(&IXpsOMPage1::Write1)},
        {8, SlotOf(&IXpsOMRemoteDictionaryResource1::Write1)},
    };
    for (const auto& [published, slot] : slots)
        EXPECT_EQ(published, slot) << "row " << &published - &slots[0].first;
}

} // namespace
