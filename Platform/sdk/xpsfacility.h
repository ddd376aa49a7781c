#pragma once

// The facility that the object model's result codes are made of, which MinGW-w64's header of the model uses
// and does not define.

#ifndef FACILITY_XPS
#define FACILITY_XPS 82
#endif
