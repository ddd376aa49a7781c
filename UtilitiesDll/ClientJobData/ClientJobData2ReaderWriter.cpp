#include "ClientJobData/ClientJobData2ReaderWriter.h"

#include "BinaryForms/PackedBytes.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <cstdint>
#include <span>
#include <string>

namespace {

constexpr char mark[] = "OJ";
constexpr unsigned char plainForm = 0;
/// The longest head of a parameter: two numbers and the form.
constexpr std::size_t maxHead = 5 + 5 + 1;

[[noreturn]] void refuse(const char* damage) {
    ThrowFailure<CPExceptionInvalidArgument>(
        [damage] { return std::string("The client job data cannot be read: ") + damage; });
}

} // namespace

ClientJobData2ReaderWriter::ClientJobData2ReaderWriter(const ByteBuffer& clientJobData) {
    const OperationScope operation("ClientJobData2ReaderWriter::ClientJobData2ReaderWriter");
    if (clientJobData.empty()) return;
    if (clientJobData.size() > maxBytes) refuse("it is larger than it may be");
    const char* damage = nullptr;
    PackedBytes::Reader reader(PackedBytes::openEnvelope(clientJobData, mark, damage));
    if (damage != nullptr) refuse(damage);
    for (std::uint64_t next = 0; !reader.isAtEnd(); ++next) {
        std::uint32_t step = 0;
        std::uint32_t length = 0;
        unsigned char form = 0;
        std::span<const unsigned char> value;
        if (!reader.readNumber(step) || !reader.readByte(form) || !reader.readNumber(length) ||
            !reader.readBytes(length, value))
            refuse("a parameter is cut");
        next += step;
        if (next > UINT32_MAX) refuse("the number of a parameter is too large");
        if (m_parameters.size() == maxParameters) refuse("it has too many parameters");
        m_parameters.try_emplace(static_cast<ULONG>(next),
                                 Parameter{form, ByteBuffer(value.data(), value.size())});
        m_valueBytes += value.size();
    }
}

bool ClientJobData2ReaderWriter::GetStringFromParameterList(LONG id, CXString& value) const {
    ByteBuffer bytes;
    const bool found = GetByteBufferFromParameterList(id, bytes);
    value = bytes.getAsCXStringFromUtf8Buffer();
    return found;
}

bool ClientJobData2ReaderWriter::GetByteBufferFromParameterList(LONG id, ByteBuffer& value) const {
    value.clear();
    const auto parameter = m_parameters.find(static_cast<ULONG>(id));
    if (parameter == m_parameters.end() || parameter->second.form != plainForm) return false;
    value = parameter->second.value;
    return true;
}

void ClientJobData2ReaderWriter::AddOrReplaceInParameterList(LONG id, const CXString& value) {
    ByteBuffer utf8;
    utf8.appendAsUtf8(value);
    AddOrReplaceInParameterList(id, utf8);
}

void ClientJobData2ReaderWriter::AddOrReplaceInParameterList(LONG id, const ByteBuffer& value) {
    const OperationScope operation("ClientJobData2ReaderWriter::AddOrReplaceInParameterList");
    const auto number = static_cast<ULONG>(id);
    const auto old = m_parameters.find(number);
    const bool isNew = old == m_parameters.end();
    const std::size_t count = m_parameters.size() + (isNew ? 1 : 0);
    const std::size_t valueBytes = m_valueBytes + value.size() - (isNew ? 0 : old->second.value.size());
    const std::size_t bytes =
        PackedBytes::headLength + count * maxHead + valueBytes + PackedBytes::checkLength;
    if (count > maxParameters || bytes > maxBytes) {
        ThrowFailure<CPExceptionInvalidArgument>(
            [id] { return "No room in the client job data for parameter " + std::to_string(id); });
    }
    m_parameters.insert_or_assign(number, Parameter{plainForm, value});
    m_valueBytes = valueBytes;
}

ByteBuffer ClientJobData2ReaderWriter::GetClientJobData2() const {
    ByteBuffer bytes = PackedBytes::beginEnvelope(mark);
    std::uint32_t next = 0;
    for (const auto& [id, parameter] : m_parameters) {
        PackedBytes::appendNumber(bytes, static_cast<std::uint32_t>(id) - next);
        bytes.push_back(parameter.form);
        PackedBytes::appendNumber(bytes, static_cast<std::uint32_t>(parameter.value.size()));
        bytes.insert(bytes.end(), parameter.value.begin(), parameter.value.end());
        next = static_cast<std::uint32_t>(id) + 1;
    }
    PackedBytes::endEnvelope(bytes);
    return bytes;
}
