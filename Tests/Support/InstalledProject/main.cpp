// Uses a header of each installed library by its room, and a symbol of each.
#include <DataModel/SimpleOptionValue.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <PrintSchema/PrintTicketQueryBuilder.h>

#include <atlcomcli.h>

#include <cstdio>

int main() {
    PrintTicketQueryBuilder builder(const_cast<wchar_t*>(L"psf:"));
    builder.AddFeature(const_cast<wchar_t*>(L"psk:"), const_cast<wchar_t*>(L"PageMediaSize"));
    CComBSTR query;
    builder.GetQuery(&query);
    const bool right = CXString(query).Compare(L"//psf:Feature[@name = \"psk:PageMediaSize\"]") == 0 &&
                       !SimpleOptionValue().IsSpecified();
    std::puts(right ? "The installed package works." : "The installed package gives a wrong query.");
    return right ? 0 : 1;
}
