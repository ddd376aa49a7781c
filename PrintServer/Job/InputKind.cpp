#include "Job/InputKind.h"

namespace OvPrintServer {

InputKind KindOfInput(std::string_view firstBytes) {
    if (firstBytes.starts_with("PK\x03\x04") || firstBytes.starts_with("PK\x05\x06"))
        return InputKind::Package;
    // Readers of PDF look for its mark in the first kilobyte.
    return firstBytes.substr(0, tellingBytes).find("%PDF-") != std::string_view::npos ? InputKind::Pdf
                                                                                      : InputKind::Unknown;
}

} // namespace OvPrintServer
