#pragma once

namespace OvPipeline {

/// What goes through a filter's end.
enum class EndKind { XpsParts, Bytes };

struct FilterEnds {
    EndKind input = EndKind::XpsParts;
    EndKind output = EndKind::XpsParts;
};

inline const char* InputName(EndKind kind) {
    return kind == EndKind::XpsParts ? "XPS parts (IXpsDocumentProvider)"
                                     : "a byte stream (IPrintReadStream)";
}
inline const char* OutputName(EndKind kind) {
    return kind == EndKind::XpsParts ? "XPS parts (IXpsDocumentConsumer)"
                                     : "a byte stream (IPrintWriteStream)";
}

} // namespace OvPipeline
