#include "DumpableObject.h"

DumpableObject::~DumpableObject() = default;
