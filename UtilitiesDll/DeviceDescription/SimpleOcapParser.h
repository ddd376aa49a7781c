#pragma once

#include "LowLevelFacilities/Ownership/OvlUniquePtr.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <vector>

class DeviceFeatureList;

/// What a device can do, by CPSS names: the device capabilities document (docs/formats/
/// device-capabilities.md), parsed once. A feature stands at the top of the document or inside a collection;
/// the questions tell these places apart. Names are compared exactly. What the document does not have is no
/// failure. Does not change, so any thread may ask.
class OV_UTILITIES_API SimpleOcapParser {
public:
    /// A blank text is a device that has nothing to say: every answer is no. Throws CPComException, with
    /// words and the line, for a text that is no device capabilities document. The thread must be in a COM
    /// apartment.
    explicit SimpleOcapParser(const CPString& xml);
    SimpleOcapParser(const SimpleOcapParser&) = delete;
    SimpleOcapParser& operator=(const SimpleOcapParser&) = delete;
    ~SimpleOcapParser();

    /// At the top, in a collection at the top, and in a collection there.
    [[nodiscard]] bool IsCpssFeatureSupported(const CPString& feature) const;
    [[nodiscard]] bool IsCpssFeatureSupported(const CPString& parent, const CPString& feature) const;
    [[nodiscard]] bool IsCpssFeatureSupported(const CPString& grandparent, const CPString& parent,
                                              const CPString& feature) const;

    /// The device needs a value for it. At the top.
    [[nodiscard]] bool IsCpssFeatureRequired(const CPString& feature) const;
    /// The device takes it in the OPIF ticket. At the top.
    [[nodiscard]] bool IsCpssFeatureOutputInOpif(const CPString& feature) const;

    /// The factory default; empty or 0, and found false, if there is none. A default that the document marks
    /// as not specified is given all the same, with found false. Only integer features have an integer. At
    /// the top, or also inside collections: the first in the document, those at the top before all others.
    [[nodiscard]] CPString GetFactoryDefaultValueAsString(const CPString& feature, bool& found,
                                                          bool alsoInCollections) const;
    [[nodiscard]] int GetFactoryDefaultValueAsInteger(const CPString& feature, bool& found,
                                                      bool alsoInCollections) const;

    /// The values of an option feature, or the features of a collection, in document order; empty if the
    /// feature is not of that kind. At the top. Gives the factory default too, if the caller has a place for
    /// it.
    [[nodiscard]] std::vector<CPString>
    GetSupportedFeatureOrValuesFromOcap(const CPString& feature, bool wantSubFeatures,
                                        CXString* factoryDefault = nullptr) const;

    /// The names of the features at the top that stand for installable options, in document order.
    [[nodiscard]] std::vector<CXString> GetSupportedInstallableOptionFeaturesFromOcap() const;

    /// How many characters the value of a text feature has at least and at most. False, with both unchanged,
    /// if the document does not say. At the top.
    bool GetTextLengthRange(const CPString& feature, unsigned& shortest, unsigned& longest) const;

private:
    OvlUniquePtr<const DeviceFeatureList> m_features;
};
