#pragma once

#include "Support/TableFeatureAccess.h"

/// A job that gives the same answer to all questions of a kind, or fails at one of them.
class UniformJob : public TableFeatureAccess {
public:
    struct Failure {};

    std::wstring text;
    int number = 0;
    tagValueEnum value = DataModelIds::VAL_UNSPECIFIED;
    bool isTold = true;
    unsigned int entries = 3; // of each collection that has any number
    int failsAt = -1;         // the number of a question; never

    mutable int asked = 0;

    CXString GetPrintJobUserName() const override { return Text(); }
    CXString GetPrintJobUserDomainName() const override { return Text(); }
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum, tagFeatureEnum,
                              tagFeatureEnum) const override {
        return Answer(password, Password());
    }
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum) const override {
        return Answer(password, Password());
    }
    bool GetIntegerValue(tagFeatureEnum, tagFeatureEnum, unsigned int index, tagFeatureEnum,
                         int& out) const override {
        return index < entries && Answer(out, number);
    }
    bool GetIntegerValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum, int& out) const override {
        return Answer(out, number);
    }
    bool GetIntegerValue(tagFeatureEnum, tagFeatureEnum, int& out) const override {
        return Answer(out, number);
    }
    bool GetIntegerValue(tagFeatureEnum, int& out) const override { return Answer(out, number); }
    bool GetStringValue(tagFeatureEnum, tagFeatureEnum, unsigned int index, tagFeatureEnum,
                        CXString& out) const override {
        return index < entries && Answer(out, CXString(text.c_str()));
    }
    bool GetStringValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum, CXString& out) const override {
        return Answer(out, CXString(text.c_str()));
    }
    bool GetStringValue(tagFeatureEnum, tagFeatureEnum, CXString& out) const override {
        return Answer(out, CXString(text.c_str()));
    }
    bool GetStringValue(tagFeatureEnum, CXString& out) const override {
        return Answer(out, CXString(text.c_str()));
    }
    SimpleOptionValue GetOptionValue(tagFeatureEnum) const override { return Option(); }
    SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum, tagFeatureEnum,
                                                tagFeatureEnum) const override {
        return Option();
    }
    SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum, tagFeatureEnum) const override {
        return Option();
    }
    bool GetBooleanValue(tagFeatureEnum, bool& out) const override { return Answer(out, true); }
    bool GetDateTimeValue(tagFeatureEnum, tagFeatureEnum, UtcTime& out) const override {
        return Answer(out, UtcTime());
    }
    bool GetDateTimeValue(tagFeatureEnum, UtcTime& out) const override { return Answer(out, UtcTime()); }
    bool IsCollectionSpecified(tagFeatureEnum) const override {
        Count();
        return isTold;
    }

private:
    ByteBuffer Password() const {
        ByteBuffer bytes;
        bytes.appendAsUtf8(CXString(text.c_str()));
        return bytes;
    }
    void Count() const {
        if (asked++ == failsAt) throw Failure();
    }
    CXString Text() const {
        Count();
        return text.c_str();
    }
    template <typename Value>
    bool Answer(Value& out, const Value& answer) const {
        Count();
        if (isTold) out = answer;
        return isTold;
    }
    SimpleOptionValue Option() const {
        Count();
        return isTold ? SimpleOptionValue(true, value) : SimpleOptionValue();
    }
};
