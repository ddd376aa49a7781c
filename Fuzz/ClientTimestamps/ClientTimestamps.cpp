// The input as the texts of time stamps that came with a job, for a job and for a cover sheet. Whatever they
// name, only time stamps and the mark of the job take them; and what was taken is sent and read again as it
// is.

#include <Annotation/AnnotationPrintTicketSettings.h>
#include <AttributeStore/AttributeBytesIndexedList.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>
#include <EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using Annotations = AnnotationPrintTicketSettings;

constexpr std::array types = {
    DataModelIds::VAL_ANNOTATION_TYPE_TEXT, DataModelIds::VAL_ANNOTATION_TYPE_TIME_STAMP,
    DataModelIds::VAL_ANNOTATION_TYPE_PICTURE, DataModelIds::VAL_ANNOTATION_TYPE_TIME_STAMP};

void MakeElements(Annotations& annotations) {
    for (const auto type : types) {
        annotations.AddNewAnnotationElement();
        annotations.GetSelected()->type = type;
        annotations.GetSelected()->text = L"before";
    }
}

std::vector<CXString> TextsOf(Annotations& annotations) {
    std::vector<CXString> texts;
    for (int i = 0; annotations.SelectAnnotationElement(i); ++i) {
        texts.push_back(annotations.GetText());
        if (!annotations.IsTimestampAnnotationType() && !(texts.back() == L"before")) std::abort();
    }
    return texts;
}

void Read(const ByteBuffer& bytes, bool isFax) {
    Annotations annotations;
    annotations.SetFaxAnnotationSettings(isFax);
    MakeElements(annotations);
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(isFax ? 207 : 205, bytes);
    if (annotations.ReadClientGeneratedTimestampTextFromClientJobData2(&data) != S_OK) std::abort();
    if (annotations.SetClientGeneratedTimestampTextInClientJobData2(&data) != S_OK) std::abort();
    Annotations again;
    again.SetFaxAnnotationSettings(isFax);
    MakeElements(again);
    if (again.ReadClientGeneratedTimestampTextFromClientJobData2(&data) != S_OK) std::abort();
    if (TextsOf(annotations) != TextsOf(again)) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteBuffer bytes(data, size);
    Read(bytes, false);
    Read(bytes, true);
    return 0;
}
