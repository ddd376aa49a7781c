// What annotations are, and what becomes of the ticket, after any one platform call fails.

#include "Support/FailureSweep.h"

#include "FilterUtilities/Annotation/TicketWithSettings.h"
#include "Support/Rows.h"

#include <AnnotationStore/AnnotationStore.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>

namespace {

/// A job's ticket and client data, what is asked of them, and the process that it is the first job of.
struct W {
    W() {
        store.AddOrReplaceAnnotationDefinition(L"Draft",
                                               CPString("<annotation-col-api>new</annotation-col-api>"));
    }
    /// Without the separators themselves: a locale that does not tell its own has the default ones.
    [[nodiscard]] std::string State() const {
        const ByteBuffer bytes = data.GetClientJobData2();
        return ticket.Committed("concat(//annotation-name-api, //annotation-col-api, count(/*/*))") +
               std::string(bytes.begin(), bytes.end());
    }

    ProcessSeparators separators;
    TicketAndSettings ticket{
        "<annotation-name-api>Draft</annotation-name-api>" +
        SettingsElements(SettingsElement({{"type", "type-timestamp"}, {"text", "x"}, {"angle", "10"}}) +
                         SettingsElement({{"type", "type-text"}}))};
    AnnotationStore store;
    ClientJobData2ReaderWriter data;
    OpenAnnotations annotations;
};

using Sweep = FailureSweep<W>;

void SweepAll(const Rows<const char*, Sweep::Operation>& operations, bool areEdits) {
    for (const auto& [name, operation] : operations) {
        Sweep sweep([] { return std::make_unique<W>(); }, operation);
        EXPECT_EQ(sweep.IsEdit(), areEdits) << name;
        sweep.Run(name);
    }
}

TEST(FailureSweep, NoDefinitionIsHalfExpanded) {
    SweepAll({{"from a store",
               [](W& w) {
                   return w.annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Draft", &w.store,
                                                                                        w.ticket.settings);
               }},
              {"sent along",
               [](W& w) {
                   return w.annotations.SetAnnotationDefinitionInClientJobData2(L"Draft", &w.store, &w.data);
               }}},
             true);
}

TEST(FailureSweep, NoFailureIsTakenForAnAnnotation) {
    SweepAll({{"elements of settings",
               [](W& w) {
                   const ProcessSeparators first; // each question is that of a first job
                   const HRESULT hr = w.annotations.Read(w.ticket.settings);
                   EXPECT_TRUE(SUCCEEDED(hr) || !w.annotations.DoesJobUseAnnotations()) << "half of them";
                   SweptAnswer answer(ShowAll(w.annotations).at(0));
                   answer.hasFailed = FAILED(hr);
                   return answer;
               }},
              {"the text of a time stamp",
               [](W& w) {
                   w.annotations.AddNewAnnotationElement();
                   w.annotations.GetSelected()->timeStampFormat = VAL_TIME_STAMP_DAY_DATE_TIME;
                   w.annotations.GetSelected()->timeStampTimePart = VAL_TIME_STAMP_HOUR_MINUTE_ZONE;
                   w.annotations.SetJobSubmitTimeInLocalTime({2026, 1, 1, 5, 9, 7, 3, 0});
                   return SweptAnswer(Utf8(w.annotations.GenerateTimstampAnnotationText()));
               }},
              {"lines of notes",
               [](W& w) {
                   w.annotations.Read({});
                   return SweptAnswer(
                       Utf8(w.annotations.WrapLineIfNecessary(CXString(std::wstring(100, L'w')))));
               }}},
             false);
}

} // namespace
