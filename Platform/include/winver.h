#pragma once

#include <winbase.h>
