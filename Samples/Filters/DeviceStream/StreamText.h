#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <filterpipeline.h>

#include <string>
#include <string_view>

/// Bytes for the device, gathered so that the stream gets them in large pieces. Throws CPComException for
/// what the stream refuses.
class StreamText {
public:
    /// The stream must outlive this object.
    explicit StreamText(IPrintWriteStream& stream) : m_stream(stream) {}

    void Add(std::string_view bytes);
    void AddUtf8(const CXString& text);
    /// Must be called at the end: what is gathered goes with this object otherwise.
    void Flush();
    /// Flush, and the stream passes on what it holds back itself, where it can.
    void PassOn();

private:
    IPrintWriteStream& m_stream;
    std::string m_gathered;
};
