#include "ComSupport/MsSafeVariant.h"

MsSafeVariant::MsSafeVariant() { VariantInit(this); }

MsSafeVariant::~MsSafeVariant() { VariantClear(this); }
