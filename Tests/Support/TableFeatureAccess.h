#pragma once

#include <FeatureAccess/FeatureQuestion.h>
#include <FeatureAccess/IFilterFeatureAccess.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>

/// A feature access that holds a table. What is not in it is not specified.
class TableFeatureAccess : public IFilterFeatureAccess {
public:
    using tagValueEnum = DataModelIds::tagValueEnum;

    CXString user = L"user";
    CXString domain = L"domain";
    tagValueEnum orientation = DataModelIds::VAL_MS_ORIENTATION_PORTRAIT;
    std::optional<std::pair<Dimension, Dimension>> outputSize;

    TableFeatureAccess& Choose(const FeaturePath& path, tagValueEnum value) {
        m_options[KeyOf(path)] = value;
        return *this;
    }
    TableFeatureAccess& Set(const FeaturePath& path, int value) {
        m_integers[KeyOf(path)] = value;
        return *this;
    }
    TableFeatureAccess& Set(const FeaturePath& path, const wchar_t* text) {
        m_texts[KeyOf(path)] = text;
        return *this;
    }
    TableFeatureAccess& SetPassword(const FeaturePath& path, const char* password) {
        m_passwords[KeyOf(path)] = password;
        return *this;
    }
    TableFeatureAccess& SetTime(const FeaturePath& path, const UtcTime& time) {
        m_times.insert_or_assign(KeyOf(path), time);
        return *this;
    }
    TableFeatureAccess& SetFlag(tagFeatureEnum feature, bool value) {
        m_flags[feature] = value;
        return *this;
    }
    TableFeatureAccess& Specify(tagFeatureEnum collection) {
        m_collections[collection] = true;
        return *this;
    }

    bool IsSupportedFeature(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum) const override { return true; }
    bool IsSupportedFeature(tagFeatureEnum, tagFeatureEnum) const override { return true; }
    bool IsSupportedFeature(tagFeatureEnum) const override { return true; }
    CXString GetPrintJobDocumentName() const override { return L"document"; }
    CXString GetPrintJobUserName() const override { return user; }
    CXString GetPrintJobUserDomainName() const override { return domain; }

    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum outer, tagFeatureEnum inner,
                              tagFeatureEnum feature) const override {
        return ReadPassword({outer, inner, feature}, password);
    }
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const override {
        return ReadPassword(feature, password);
    }
    bool GetDimensionValue(tagFeatureEnum, Dimension&) const override { return false; }
    bool GetIntegerValue(tagFeatureEnum outer, tagFeatureEnum inner, unsigned int index,
                         tagFeatureEnum feature, int& value) const override {
        return Read(m_integers, FeaturePath(outer, inner, feature).At(index), value);
    }
    bool GetIntegerValue(tagFeatureEnum outer, tagFeatureEnum inner, tagFeatureEnum feature,
                         int& value) const override {
        return Read(m_integers, {outer, inner, feature}, value);
    }
    bool GetIntegerValue(tagFeatureEnum outer, tagFeatureEnum feature, int& value) const override {
        return Read(m_integers, {outer, feature}, value);
    }
    bool GetIntegerValue(tagFeatureEnum feature, int& value) const override {
        return Read(m_integers, feature, value);
    }
    bool GetStringValue(tagFeatureEnum outer, tagFeatureEnum inner, unsigned int index,
                        tagFeatureEnum feature, CXString& value) const override {
        return Read(m_texts, FeaturePath(outer, inner, feature).At(index), value);
    }
    bool GetStringValue(tagFeatureEnum outer, tagFeatureEnum inner, tagFeatureEnum feature,
                        CXString& value) const override {
        return Read(m_texts, {outer, inner, feature}, value);
    }
    bool GetStringValue(tagFeatureEnum outer, tagFeatureEnum feature, CXString& value) const override {
        return Read(m_texts, {outer, feature}, value);
    }
    bool GetStringValue(tagFeatureEnum outer, unsigned int index, tagFeatureEnum feature,
                        CXString& value) const override {
        return Read(m_texts, FeaturePath(outer, feature).At(index), value);
    }
    bool GetStringValue(tagFeatureEnum feature, CXString& value) const override {
        return Read(m_texts, feature, value);
    }
    SimpleOptionValue GetOptionValue(tagFeatureEnum feature) const override { return Option(feature); }
    SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum outer, tagFeatureEnum inner,
                                                tagFeatureEnum feature) const override {
        return Option({outer, inner, feature});
    }
    SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum outer, tagFeatureEnum feature) const override {
        return Option({outer, feature});
    }
    bool GetBooleanValue(tagFeatureEnum feature, bool& value) const override {
        const auto row = m_flags.find(feature);
        if (row != m_flags.end()) value = row->second;
        return row != m_flags.end();
    }
    bool GetDateTimeValue(tagFeatureEnum outer, tagFeatureEnum feature, UtcTime& value) const override {
        return Read(m_times, {outer, feature}, value);
    }
    bool GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const override {
        return Read(m_times, feature, value);
    }
    bool IsCollectionSpecified(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum feature) const override {
        return m_collections.contains(feature);
    }
    bool IsCollectionSpecified(tagFeatureEnum, tagFeatureEnum feature) const override {
        return m_collections.contains(feature);
    }
    bool IsCollectionSpecified(tagFeatureEnum feature) const override {
        return m_collections.contains(feature);
    }
    bool GetBytesValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum, ByteBuffer&) const override {
        return false;
    }
    bool GetBytesValue(tagFeatureEnum, tagFeatureEnum, ByteBuffer&) const override { return false; }
    bool GetBytesValue(tagFeatureEnum, ByteBuffer&) const override { return false; }
    tagValueEnum GetEffectiveOrientation() const override { return orientation; }
    bool GetOutputSize(tagFeatureEnum, unsigned int, Dimension&, Dimension&) const override { return false; }
    bool GetOutputSize(tagFeatureEnum, Dimension&, Dimension&) const override { return false; }
    bool GetOutputSize(Dimension& width, Dimension& height) const override {
        if (outputSize) std::tie(width, height) = *outputSize;
        return outputSize.has_value();
    }
    unsigned int GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum, tagFeatureEnum) const override {
        return 0;
    }
    unsigned int GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum) const override { return 0; }
    SimpleOptionValue GetFactoryDefaultOptionValue(tagFeatureEnum) const override { return {}; }
    bool GetFactoryDefaultIntegerValue(tagFeatureEnum, int&) const override { return false; }
    bool GetFactoryDefaultDimensionValue(tagFeatureEnum, Dimension&) const override { return false; }
    void SetStringValue(tagFeatureEnum feature, const CXString& text, bool) override { Set(feature, text); }
    void SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) override {
        Choose(feature, value.GetValue());
    }
    CPString GetDumpDisplayString(const SimpleOptionValue&) const override { return {}; }

private:
    using Key = std::uint64_t;
    template <typename Value>
    using Table = std::unordered_map<Key, Value>;

    /// The path in one number: features have 17 bits, and positions 13 and all beyond.
    static Key KeyOf(const FeaturePath& path) {
        Key key = 0;
        for (const tagFeatureEnum feature : path.Features())
            key = key << 17 | static_cast<Key>(feature);
        return (key << 13) + path.Index().value_or(0);
    }
    template <typename Value>
    static bool Read(const Table<Value>& table, const FeaturePath& path, Value& value) {
        const auto row = table.find(KeyOf(path));
        if (row != table.end()) value = row->second;
        return row != table.end();
    }
    bool ReadPassword(const FeaturePath& path, ByteBuffer& password) const {
        std::string text;
        if (!Read(m_passwords, path, text)) return false;
        password.assign(text.begin(), text.end());
        return true;
    }
    SimpleOptionValue Option(const FeaturePath& path) const {
        tagValueEnum value = DataModelIds::VAL_UNSPECIFIED;
        return Read(m_options, path, value) ? SimpleOptionValue(true, value) : SimpleOptionValue();
    }

    Table<tagValueEnum> m_options;
    Table<int> m_integers;
    Table<CXString> m_texts;
    Table<std::string> m_passwords;
    Table<UtcTime> m_times;
    std::map<tagFeatureEnum, bool> m_flags;
    std::map<tagFeatureEnum, bool> m_collections;
};
