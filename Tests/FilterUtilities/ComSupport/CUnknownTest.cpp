#include "Support/VirtualSlots.h"

#include <ComSupport/CUnknown.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

namespace {

constexpr GUID someClass{0x1b2c3d4e, 0x0102, 0x0304, {5, 6, 7, 8, 9, 10, 11, 12}};

class SomeFilter : public CUnknown<IPrintPipelineFilter> {
public:
    explicit SomeFilter(bool* destroyed = nullptr)
        : CUnknown(__uuidof(IPrintPipelineFilter)), m_destroyed(destroyed) {}
    SomeFilter(const SomeFilter&) = default;
    ~SomeFilter() override {
        if (m_destroyed) *m_destroyed = true;
    }
    HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator*, IPrintPipelinePropertyBag*,
                                               IPrintPipelineManagerControl*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ShutdownOperation() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE StartOperation() override { return S_OK; }

private:
    bool* m_destroyed;
};

TEST(CUnknown, AnswersForItsInterfaceUntilTheLastReference) {
    SomeFilter filter;
    EXPECT_EQ(filter.QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);

    void* found = &filter;
    EXPECT_EQ(filter.QueryInterface(__uuidof(IPrintReadStream), &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);

    for (const GUID& iid : {__uuidof(IUnknown), __uuidof(IPrintPipelineFilter)}) {
        EXPECT_EQ(filter.QueryInterface(iid, &found), S_OK);
        EXPECT_EQ(found, static_cast<IPrintPipelineFilter*>(&filter));
    }
    EXPECT_EQ(filter.AddRef(), 4u);

    filter.SetIID(__uuidof(IPrintReadStream));
    EXPECT_EQ(filter.QueryInterface(__uuidof(IPrintPipelineFilter), &found), E_NOINTERFACE);
    EXPECT_EQ(filter.QueryInterface(__uuidof(IPrintReadStream), &found), S_OK);

    bool destroyed = false;
    IUnknown* const last = new SomeFilter(&destroyed);
    EXPECT_EQ(last->AddRef(), 2u);
    EXPECT_EQ(last->Release(), 1u);
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(last->Release(), 0u);
    EXPECT_TRUE(destroyed);
}

TEST(CUnknown, CopyCountsDownFromTheCountOfItsSource) {
    SomeFilter source;
    EXPECT_TRUE(source.GetCLSID() == GUID{});
    source.SetCLSID(someClass);
    source.AddRef();
    source.AddRef();
    SomeFilter copy(source);
    EXPECT_TRUE(copy.GetIID() == __uuidof(IPrintPipelineFilter));
    EXPECT_TRUE(copy.GetCLSID() == someClass);
    EXPECT_EQ(copy.Release(), 2u);
    SomeFilter other;
    static_cast<CUnknown<IPrintPipelineFilter>&>(other) = source;
    EXPECT_EQ(other.Release(), 2u);
}

TEST(CUnknown, KeepsTheSlotsOfItsInterface) {
    EXPECT_EQ(SlotOf(&SomeFilter::QueryInterface), 0u);
    EXPECT_EQ(SlotOf(&SomeFilter::AddRef), 1u);
    EXPECT_EQ(SlotOf(&SomeFilter::Release), 2u);
    EXPECT_EQ(SlotOf(&SomeFilter::InitializeFilter), 3u);
    EXPECT_EQ(SlotOf(&SomeFilter::ShutdownOperation), 4u);
    EXPECT_EQ(SlotOf(&SomeFilter::StartOperation), 5u);
}

} // namespace
