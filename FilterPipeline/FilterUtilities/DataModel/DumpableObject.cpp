#include "DataModel/DumpableObject.h"

DumpableObject::~DumpableObject() = default;
