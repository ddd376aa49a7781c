// The 200 settings of a job read from a store into the list that answers questions, beside a copy and a hash
// of the same bytes. Reports time as a ratio in the same run.

#include "Limits.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/PersistentAttributes.h>
#include <BinaryForms/Hash32.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr unsigned int records = 200;
constexpr int rounds = 100;
constexpr int repetitions = 200;

using Id = AttributeBytesFeatureId;
using Value = AttributeBytesValue;

/// Settings of all kinds: of ten, six are options, and one each an integer, a text, a length, a collection of
/// two.
ByteBuffer MakeStore() {
    AttributeBytesRawList list;
    unsigned int count = 0;
    for (LONG id = 40; count < records; id += 5) {
        AttributeBytesRawList members;
        Value value = Value::FromOption(5000 + 7 * id);
        switch (id / 5 % 10) {
        case 0:
            value = Value::FromInteger(static_cast<int>(id) - 100);
            break;
        case 1:
            value = Value::FromString((L"Setting of " + std::to_wstring(id)).c_str());
            break;
        case 2:
            value =
                Value::FromDimension(Dimension(static_cast<double>(id), Dimension::HundredthOfMillimeter));
            break;
        case 3:
            if (count + 3 > records) break;
            members.AddAttributeBytes(AttributeBytes(Id(155), Value::FromInteger(static_cast<int>(id))));
            members.AddAttributeBytes(AttributeBytes(Id(156), Value::FromOption(id, false)));
            value = Value::FromCollection(members);
            break;
        default:
            break;
        }
        list.AddAttributeBytes(AttributeBytes(Id(id), value));
        count += 1 + members.GetNumberOfAttributeBytes();
    }
    AttributeBytesNameSpaces nameSpaces;
    nameSpaces.SetNameSpaceAttributes(PersistentAttributes::GetDataModelDocPropNameSpaceId(), list);
    PersistentAttributes store({}, false, nullptr);
    store.SetAttributeBytesNameSpaces(nameSpaces);
    return store.GetPersistentAttributesState();
}

double NanosecondsOf(auto action) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < rounds; ++i)
        action();
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count() / rounds;
}

} // namespace

int main() {
    const ByteBuffer bytes = MakeStore();
    ByteBuffer copy(bytes.size());
    const auto copyAndHash = [&] {
        std::memcpy(copy.data(), bytes.data(), bytes.size());
        benchmark::DoNotOptimize(Hash32::GetHash32(copy.data(), copy.size()));
    };
    const auto read = [&] {
        PersistentAttributes store(bytes, false, nullptr);
        AttributeBytesRawList raw;
        store.GetAttributeBytesListForNameSpace(PersistentAttributes::GetDataModelDocPropNameSpaceId(), raw);
        AttributeBytesIndexedList list;
        list.ImportFromRawList(raw);
        if (list.GetOptionValue(Id(45), nullptr) != 5315) std::abort();
        benchmark::DoNotOptimize(list);
    };
    // The best of several, taken in turn.
    double copying = 1e300;
    double reading = 1e300;
    for (int repetition = 0; repetition < repetitions; ++repetition) {
        copying = std::min(copying, NanosecondsOf(copyAndHash));
        reading = std::min(reading, NanosecondsOf(read));
    }
    std::printf("%u records in %zu bytes: read and indexed %.0f ns, copied and hashed %.0f ns\n", records,
                bytes.size(), reading, copying);
    Limits::Report("records read and indexed, beside copied and hashed", reading / copying, 20);
    return Limits::Conclude();
}
