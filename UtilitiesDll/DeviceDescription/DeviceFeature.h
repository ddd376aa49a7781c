#pragma once

#include "LowLevelFacilities/Strings/CPString.h"

#include <limits>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

class DeviceFeatureList;

/// One feature of a device capabilities document.
struct DeviceFeature {
    enum class Kind { Option, Integer, Text, Collection };

    DeviceFeature();
    ~DeviceFeature();
    DeviceFeature(const DeviceFeature&) = delete;
    DeviceFeature& operator=(const DeviceFeature&) = delete;

    Kind kind = Kind::Option;
    CPString name;
    bool isRequired = false;
    bool isOutputInOpif = false;
    bool isInstallable = false;
    bool hasDefault = false;
    bool isDefaultSpecified = true;
    CPString factoryDefault;
    std::vector<CPString> values; // of an option
    int integerDefault = 0;       // this and the next two: of an integer
    int smallest = (std::numeric_limits<int>::min)();
    int largest = (std::numeric_limits<int>::max)();
    bool hasLengthRange = false; // this and the next two: of a text
    unsigned shortest = 0;
    unsigned longest = 0;
    std::unique_ptr<DeviceFeatureList> members; // of a collection, never null there
};

/// The features of one place of the document, in their order there.
class DeviceFeatureList {
public:
    DeviceFeatureList() = default;
    DeviceFeatureList(const DeviceFeatureList&) = delete;
    DeviceFeatureList& operator=(const DeviceFeatureList&) = delete;

    /// There must be none of that name yet.
    void Add(std::unique_ptr<DeviceFeature> feature);
    /// Null if there is none.
    [[nodiscard]] const DeviceFeature* Find(std::string_view name) const;
    /// Null if there is none, or if it is no collection.
    [[nodiscard]] const DeviceFeatureList* FindMembers(std::string_view name) const;
    /// Also in the collections, behind the features of this list itself. Null if there is none.
    [[nodiscard]] const DeviceFeature* FindAnywhere(std::string_view name) const;
    [[nodiscard]] const std::vector<std::unique_ptr<const DeviceFeature>>& InOrder() const noexcept {
        return m_features;
    }

private:
    std::vector<std::unique_ptr<const DeviceFeature>> m_features;
    std::unordered_map<std::string_view, const DeviceFeature*> m_byName;
};
