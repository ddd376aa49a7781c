#pragma once

#include <objbase.h>
#include <oleauto.h>
