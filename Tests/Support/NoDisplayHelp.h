#pragma once

#include <AttributeStore/IAttributeBytesDebugDisplayHelper.h>

#include <memory>

/// Knows no names of features and values.
class NoDisplayHelp : public IAttributeBytesDebugDisplayHelper {
public:
    [[nodiscard]] std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override {
        return std::make_unique<NoDisplayHelp>();
    }
};
