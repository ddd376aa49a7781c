#include "Support/PipelineJob.h"

#include <Chain/FilterModule.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPipeline;
using testing::HasSubstr;

namespace {

const std::string provider = "{b8cf8530-5562-47c4-ab67-b1f69ecf961e}";
const std::string consumer = "{4368D8A2-4181-4A9F-B295-3D9A38BB9BA0}";
const std::string readStream = "{4d47a67c-66cc-4430-850e-daf466fe5bc4}";
const std::string writeStream = "{65bb7f1b-371e-4571-8ac7-912f510c1a38}";

std::string FilterElement(const std::string& input, const std::string& output, const std::string& more = {}) {
    return "<Filter dll=\"a.dll\" clsid=\"{6a1f0f3e-0d0c-4c7e-9b52-1e5a7730c101}\" name=\"A\"><Input "
           "guid=\"" +
           input + "\"/><Output guid=\"" + output + "\"/>" + more + "</Filter>";
}

class ConfigurationTest : public testing::Test {
protected:
    PipelineSpec Read(const std::string& text) {
        std::ofstream(m_folder / "pipeline.xml") << text;
        return ReadPipelineConfiguration(m_folder / "pipeline.xml");
    }
    TemporaryFolder m_folder;
};

TEST_F(ConfigurationTest, ReadsFiltersInOrderWithTheirEnds) {
    const PipelineSpec spec = Read(
        "<Filters>" + FilterElement(provider, consumer) +
        FilterElement(provider, writeStream, "<Interleaving mode=\"MarkupFirst\"/>") +
        FilterElement(readStream, writeStream) +
        "<FilterServiceProvider dll=\"s.dll\"/><OptionalFilterServiceProvider dll=\"o.dll\"/></Filters>");
    ASSERT_EQ(3u, spec.filters.size());
    EXPECT_EQ("A", spec.filters[0].name);
    EXPECT_EQ("a.dll", spec.filters[0].module);
    EXPECT_EQ("{6a1f0f3e-0d0c-4c7e-9b52-1e5a7730c101}", GuidText(spec.filters[0].clsid));
    EXPECT_EQ(EndKind::Bytes, spec.filters[1].ends->output);
    EXPECT_EQ(EndKind::Bytes, spec.filters[2].ends->input);
    EXPECT_EQ(Interleaving::MarkupFirst, spec.interleaving);
    EXPECT_EQ(1u, spec.services.size());
    EXPECT_EQ(1u, spec.optionalServices.size());
}

TEST_F(ConfigurationTest, RefusesWhatIsWrongWithItsLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"<Filters>", "pipeline.xml line 1"},
        {"<Pipeline/>", "the root element is Pipeline, not Filters"},
        {"<Filters>\n<Filtre/></Filters>", "line 2: unknown element Filtre"},
        {"<Filters><Filter clsid=\"x\"/></Filters>", "Filter has no dll"},
        {"<Filters><Filter dll=\"a\" clsid=\"{x}\"/></Filters>", "the clsid \"{x}\" is no GUID"},
        {"<Filters>" + FilterElement(consumer, consumer) + "</Filters>",
         "is not an interface that this host connects"},
        {"<Filters>" + FilterElement(provider, consumer, "<Output guid=\"" + consumer + "\"/>") +
             "</Filters>",
         "a second Output"},
        {"<Filters><Filter dll=\"a\" clsid=\"{6a1f0f3e-0d0c-4c7e-9b52-1e5a7730c101}\"><Output guid=\"" +
             consumer + "\"/></Filter></Filters>",
         "the filter a has no Input"},
        {"<Filters>" + FilterElement(provider, consumer, "<Interleaving mode=\"Both\"/>") + "</Filters>",
         "the interleaving mode \"Both\""},
    };
    for (const auto& [text, problem] : cases) {
        try {
            Read(text);
            ADD_FAILURE() << "accepted: " << text;
        } catch (const HostError& error) {
            EXPECT_THAT(error.what(), HasSubstr(problem)) << text;
        }
    }
}

class ChainTest : public testing::Test {
protected:
    std::string Line(std::vector<FilterSpec> filters) {
        SampleJob().Write(m_folder / "job.xps");
        return FailureLine(RunJob(MakeJob(m_folder / "job.xps", m_folder / "out.xps", std::move(filters))));
    }
    TemporaryFolder m_folder;
};

// A filter that looks at its ends as the library's bases do: what it reads and writes is asked for the
// interface.
template <class Reads, class Writes>
FilterSpec Particular(const std::string& name) {
    class ParticularFilter final : public ComObject<IPrintPipelineFilter> {
    public:
        HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator* communicator,
                                                   IPrintPipelinePropertyBag*,
                                                   IPrintPipelineManagerControl*) override {
            CComPtr<IUnknown> reader;
            CComPtr<IUnknown> writer;
            communicator->RequestReader(reinterpret_cast<void**>(&reader));
            communicator->RequestWriter(reinterpret_cast<void**>(&writer));
            return CComQIPtr<Reads>(reader) && CComQIPtr<Writes>(writer) ? S_OK : E_NOINTERFACE;
        }
        HRESULT STDMETHODCALLTYPE ShutdownOperation() override { return S_OK; }
        HRESULT STDMETHODCALLTYPE StartOperation() override { return E_ABORT; }

    private:
        ~ParticularFilter() override = default;
    };
    FilterSpec spec;
    spec.name = name;
    spec.maker = [] { return new ParticularFilter; };
    return spec;
}

TEST_F(ChainTest, FindsOutTheEndsOfFiltersNamedByThemselves) {
    const auto xps = Particular<IXpsDocumentProvider, IXpsDocumentConsumer>("xps");
    const auto render = Particular<IXpsDocumentProvider, IPrintWriteStream>("render");
    const auto bytes = Particular<IPrintReadStream, IPrintWriteStream>("bytes");
    for (const auto& chain : std::vector<std::vector<FilterSpec>>{{xps, render, bytes}, {bytes, bytes}})
        EXPECT_THAT(Line(chain), HasSubstr("E_ABORT")) << "all are initialised and started";
    EXPECT_THAT(
        Line({xps, bytes}),
        HasSubstr(
            "the chain does not fit: filter 1 (xps) writes XPS parts (IXpsDocumentConsumer), but filter 2 "
            "(bytes) reads a byte stream (IPrintReadStream)"));
    EXPECT_THAT(Line({Particular<IFixedPage, IFixedPage>("odd")}),
                HasSubstr("filter odd can be initialised with no kind of reader and writer"));
}

TEST_F(ChainTest, LoadsModulesOrSaysWhatIsWrongWithThem) {
    const auto module = [&](const std::string& argument) { return Line({ParseFilterArgument(argument)}); };
    // An older one hands its filter out itself; it is found by the name that it has on another system.
    EXPECT_THAT(module(OV_BINARY_DIR "/lib/libOldFilter.dll"), HasSubstr("filter OldFilter: 0x80004004"));
    std::ofstream(m_folder / "text.so") << "no module";
    EXPECT_THAT(module((m_folder / "text.so").string()), HasSubstr("cannot load the module: "));
    EXPECT_THAT(module(OV_BINARY_DIR "/lib/libov-Platform.so"),
                HasSubstr("has no DllGetClassObject: 0x8007007f"));
    EXPECT_THAT(module(OV_BINARY_DIR "/lib/libPassThrough.so,{00000000-0000-0000-0000-000000000001}"),
                HasSubstr("makes no filter of the class {00000000-0000-0000-0000-000000000001}: 0x80040111"));
}

TEST_F(ChainTest, ServiceModulesFillTheBagAndOptionalOnesMayBeMissing) {
    FilterSpec service = ParseFilterArgument(OV_BINARY_DIR "/lib/libOldFilter.so");
    FilterSpec missing = ParseFilterArgument("NoSuchModule");
    std::string served;
    const auto look = [&](const FilterEnv& env, IXpsDocumentConsumer*, IFixedPage*) -> HRESULT {
        CComVariant value;
        const HRESULT hr = env.bag->GetProperty(L"TestService", &value);
        if (SUCCEEDED(hr)) served = Utf8Argument(value.bstrVal);
        return hr;
    };
    SampleJob().Write(m_folder / "job.xps");
    JobDescription job = MakeJob(m_folder / "job.xps", m_folder / "out.xps", {Filter("look", PassOn(look))});
    job.pipeline.services = {service};
    job.pipeline.optionalServices = {missing};
    JobOutcome outcome = RunJob(job);
    EXPECT_TRUE(outcome.isWritten) << FailureLine(outcome);
    EXPECT_EQ("served", served);
    job.pipeline.services = {missing};
    EXPECT_THAT(FailureLine(RunJob(job)), HasSubstr("there is no module NoSuchModule"));
}

} // namespace
