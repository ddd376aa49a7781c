#include "Support/Growth.h"

#include <ClientJobData/ClientJobData2ReaderWriter.h>
#include <Encryption/DataEncrypter.h>

namespace {

void Fill(ClientJobData2ReaderWriter& data, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
        data.AddOrReplaceInParameterList(static_cast<LONG>(i), CXString(L"value"));
}

const GrowthCase cases[] = {
    {"WritesAndReadsClientJobData",
     [](std::size_t n) {
         return [n] {
             ClientJobData2ReaderWriter data;
             Fill(data, n);
             const ClientJobData2ReaderWriter read(data.GetClientJobData2());
             EXPECT_EQ(data.GetClientJobData2(), read.GetClientJobData2());
         };
     },
     ClientJobData2ReaderWriter::maxParameters / 4},
    {"Scrambles",
     [](std::size_t n) {
         return [text = CXString(std::wstring(10 * n, L'x'))] {
             const ByteBuffer form = DataEncrypter::EncryptStringWithOrvelSimple1(text);
             EXPECT_EQ(text, DataEncrypter::DecryptStringWithOrvelSimple1(form.getAsCXStringFromUtf8Buffer())
                                 .getAsCXStringFromUtf8Buffer());
         };
     }},
};

class ClientJobDataGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(ClientJobDataGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, ClientJobDataGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
