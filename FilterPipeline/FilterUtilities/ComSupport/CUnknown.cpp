#include "CUnknown.h"

template class CUnknown<IPrintPipelineFilter>;
template class CUnknown<ISAXContentHandler>;
