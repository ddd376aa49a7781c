#include "Support/VirtualSlots.h"

#include <windows.h>
#include <atlcomcli.h>
#include <filterpipeline.h>
#include <gtest/gtest.h>
#include <msxml6.h>
#include <ocidl.h>

#include <cstddef>

namespace {

// The published binary interface, whatever the compiler's own types are.
static_assert(sizeof(LONG) == 4 && sizeof(ULONG) == 4 && sizeof(DWORD) == 4 && sizeof(BOOL) == 4 &&
              sizeof(HRESULT) == 4);
static_assert(sizeof(WORD) == 2 && sizeof(VARIANT_BOOL) == 2 && sizeof(VARTYPE) == 2 && sizeof(BYTE) == 1);
static_assert(sizeof(LONGLONG) == 8 && sizeof(LARGE_INTEGER) == 8 && sizeof(FILETIME) == 8 &&
              sizeof(SYSTEMTIME) == 16);
static_assert(sizeof(GUID) == 16 && offsetof(GUID, Data4) == 8);
static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, bstrVal) == 8 && offsetof(VARIANT, decVal) == 0);
static_assert(sizeof(SAFEARRAY) == 32 && offsetof(SAFEARRAY, pvData) == 16 &&
              offsetof(SAFEARRAY, rgsabound) == 24);
static_assert(sizeof(STATSTG) == 80 && offsetof(STATSTG, cbSize) == 16 && offsetof(STATSTG, clsid) == 56);
static_assert(FAILED(E_FAIL) && FAILED(HRESULT_FROM_WIN32(ERROR_NOT_FOUND)) && SUCCEEDED(S_FALSE));

TEST(ResultCodes, CarryWin32ErrorsAndLeaveResultsAlone) {
    EXPECT_EQ(static_cast<HRESULT>(0x80070490), HRESULT_FROM_WIN32(ERROR_NOT_FOUND));
    EXPECT_EQ(S_OK, HRESULT_FROM_WIN32(ERROR_SUCCESS));
    EXPECT_EQ(E_FAIL, HRESULT_FROM_WIN32(E_FAIL));
}

TEST(Interfaces, StandInTheirPublishedSlots) {
    const auto query = static_cast<HRESULT (IUnknown::*)(REFIID, void**)>(&IUnknown::QueryInterface);
    const std::pair<std::size_t, std::size_t> slots[] = {
        {0, SlotOf(query)},
        {2, SlotOf(&IUnknown::Release)},
        {3, SlotOf(&IClassFactory::CreateInstance)},
        {3, SlotOf(&ISequentialStream::Read)},
        {4, SlotOf(&IStream::Write)},
        {5, SlotOf(&IStream::Seek)},
        {6, SlotOf(&IStream::SetSize)},
        {7, SlotOf(&IStream::CopyTo)},
        {8, SlotOf(&IStream::Commit)},
        {9, SlotOf(&IStream::Revert)},
        {10, SlotOf(&IStream::LockRegion)},
        {11, SlotOf(&IStream::UnlockRegion)},
        {12, SlotOf(&IStream::Stat)},
        {13, SlotOf(&IStream::Clone)},
        {6, SlotOf(&IDispatch::Invoke)},
        {5, SlotOf(&IErrorInfo::GetDescription)},
        {5, SlotOf(&ICreateErrorInfo::SetDescription)},
        {6, SlotOf(&IPersistStream::Save)},
        {8, SlotOf(&IPersistStreamInit::InitNew)},
        {3, SlotOf(&IPrintPipelineFilter::InitializeFilter)},
        {4, SlotOf(&IPrintPipelineFilter::ShutdownOperation)},
        {5, SlotOf(&IPrintPipelineFilter::StartOperation)},
        {5, SlotOf(&IPrintPipelinePropertyBag::DeleteProperty)},
        {4, SlotOf(&IPrintReadStream::ReadBytes)},
        {4, SlotOf(&IPrintWriteStream::Close)},
        {8, SlotOf(&IXpsDocumentConsumer::CloseSender)},
        {9, SlotOf(&IXpsDocumentConsumer::GetNewEmptyPart)},
        // Automation interfaces go on behind the four slots of IDispatch.
        {7, SlotOf(&IXMLDOMNode::get_nodeName)},
        {30, SlotOf(&IXMLDOMNode::get_nodeTypedValue)},
        {36, SlotOf(&IXMLDOMNode::selectNodes)},
        {37, SlotOf(&IXMLDOMNode::selectSingleNode)},
        {42, SlotOf(&IXMLDOMNode::transformNodeToObject)},
        {45, SlotOf(&IXMLDOMDocument::get_documentElement)},
        {65, SlotOf(&IXMLDOMDocument::loadXML)},
        {80, SlotOf(&IXMLDOMDocument2::setProperty)},
    };
    for (const auto& slot : slots)
        EXPECT_EQ(slot.first, slot.second) << "row " << &slot - slots + 1;
}

TEST(Identifiers, ConvertToTextAndBack) {
    const GUID guid = {0x0c733a30, 0x2a1c, 0x11ce, {0xad, 0xe5, 0x00, 0xaa, 0x00, 0x44, 0x77, 0x3d}};
    wchar_t text[39];
    EXPECT_EQ(0, StringFromGUID2(guid, text, 38));
    ASSERT_EQ(39, StringFromGUID2(guid, text, 39));
    EXPECT_STREQ(L"{0C733A30-2A1C-11CE-ADE5-00AA0044773D}", text);
    GUID parsed{};
    EXPECT_EQ(S_OK, CLSIDFromString(L"{0c733a30-2a1c-11ce-ade5-00aa0044773d}", &parsed));
    EXPECT_EQ(guid, parsed);
    for (const wchar_t* malformed :
         {L"", L"0C733A30-2A1C-11CE-ADE5-00AA0044773D", L"{0C733A30-2A1C-11CE-ADE5-00AA0044773D} ",
          L"{0C733A30-2A1C-11CE-ADE500-AA0044773D}", L"{0C733A3G-2A1C-11CE-ADE5-00AA0044773D}"}) {
        EXPECT_EQ(CO_E_CLASSSTRING, CLSIDFromString(malformed, &parsed)) << malformed;
        EXPECT_EQ(CO_E_IIDSTRING, IIDFromString(malformed, &parsed)) << malformed;
    }

    // New ones are random, of version four.
    GUID first{}, second{};
    ASSERT_EQ(S_OK, CoCreateGuid(&first));
    ASSERT_EQ(S_OK, CoCreateGuid(&second));
    EXPECT_FALSE(first == second);
    EXPECT_EQ(4, first.Data3 >> 12);
    EXPECT_EQ(2, first.Data4[0] >> 6);
}

} // namespace
