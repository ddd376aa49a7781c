#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>

#include <cstddef>
#include <map>

/// What the client computer adds to a job for the machine that prints it: byte strings found by number, read
/// from bytes and written back (docs/formats/client-job-data.md). What is in a form unknown here is not
/// found, and is written back as it came.
class OV_UTILITIES_API ClientJobData2ReaderWriter {
public:
    static constexpr std::size_t maxBytes = std::size_t{16} * 1024 * 1024;
    static constexpr std::size_t maxParameters = 4096;

    /// Without parameters.
    ClientJobData2ReaderWriter() = default;
    /// Empty bytes are a list without parameters. Throws CPExceptionInvalidArgument, with what is wrong and
    /// where, if the bytes are damaged.
    explicit ClientJobData2ReaderWriter(const ByteBuffer& clientJobData);

    /// False, with an empty result, if there is no such parameter. Both read any parameter: a text is its
    /// UTF-8 form. As text, each byte that is not UTF-8 becomes U+FFFD.
    bool GetStringFromParameterList(LONG id, CXString& value) const;
    bool GetByteBufferFromParameterList(LONG id, ByteBuffer& value) const;

    /// Throws CPExceptionInvalidArgument, and changes nothing, if the list would go beyond its limits.
    void AddOrReplaceInParameterList(LONG id, const CXString& value);
    void AddOrReplaceInParameterList(LONG id, const ByteBuffer& value);

    /// The list as bytes.
    [[nodiscard]] ByteBuffer GetClientJobData2() const;

private:
    struct Parameter {
        unsigned char form;
        ByteBuffer value;
    };

    std::map<ULONG, Parameter> m_parameters;
    std::size_t m_valueBytes = 0; // of all parameters
};
