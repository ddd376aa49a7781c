#pragma once

// Results of controls, of which this platform has those of connections.

#include <ocidl.h>

#define CONNECT_E_NOCONNECTION _HRESULT_TYPEDEF_(0x80040200)
#define CONNECT_E_CANNOTCONNECT _HRESULT_TYPEDEF_(0x80040202)
