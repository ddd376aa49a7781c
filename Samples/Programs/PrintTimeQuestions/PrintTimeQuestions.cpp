// A program that runs beside a job: PrintTimeQuestions PRINTER {DRIVER ID}. It reaches the printer's context,
// asks the queue and the user what matters before anything is printed, and remembers for the user that it
// did.
#include <DataModel/ValueNameTable.h>
#include <PrintTime/PrintTimeUiHelper.h>
#include <PrintTime/PrinterContextForConsoleApps.h>

#include <cstdio>

namespace {

constexpr auto timesAsked = L"PrintTimeQuestions: times asked";

void PrintFlag(const char* question, bool answer) {
    std::printf("%s: %s\n", question, answer ? "yes" : "no");
}

void PrintAnswers(IPrinterPropertyBag* queue, IPrinterPropertyBag& user) {
    const auto prompt = PrintTimeUiHelper::GetPrintTimeAccountingPromptOption(queue);
    std::printf("asks for accounting data: %s\n", FindValueName(prompt));
    PrintFlag("only secure prints", PrintTimeUiHelper::IsSecurePrintOnlyEnabled(queue));
    PrintFlag("only black and white", PrintTimeUiHelper::BlackAndWhiteOnlyToggleEnabled(queue));
    PrintFlag("tells the user of finished jobs",
              PrintTimeUiHelper::IsJobTrackerEnabledByUserPreferences(user));
}

HRESULT CountForUser(IPrinterPropertyBag& user) {
    LONG times = 0;
    user.GetInt32(CComBSTR(timesAsked), &times); // 0 where nobody has asked yet
    std::printf("asked before: %d times\n", static_cast<int>(times));
    return user.SetInt32(CComBSTR(timesAsked), times + 1);
}

int Complain(const char* what, HRESULT hr) {
    std::fprintf(stderr, "PrintTimeQuestions: %s: 0x%08X\n", what, static_cast<unsigned>(hr));
    return 1;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("PrintTimeQuestions PRINTER {DRIVER ID}\n", stderr);
        return 2;
    }
    PrinterContextForConsoleApps context(CXString{arguments[1]}, CXString{arguments[2]});
    CComPtr<IPrinterPropertyBag> queue, user;
    HRESULT hr = context.GetQueuePropertyBag(&queue);
    if (SUCCEEDED(hr)) hr = context.GetUserPropertyBag(&user);
    if (FAILED(hr)) return Complain("the printer cannot be reached", hr);
    PrintAnswers(queue, *user);
    hr = CountForUser(*user);
    return FAILED(hr) ? Complain("the user's settings cannot be written", hr) : 0;
}
