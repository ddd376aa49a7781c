#pragma once

#include "Parts/FixedPagePart.h"

#include <ObjectModel/ReferredPart.h>

namespace OvPipeline {

/// The object for a part of the job's package, by its kind; a part of no published kind becomes an
/// UnknownPart.
CComPtr<IUnknown> MakeStoredPart(const SharedContext& context, const OvPlatform::PackagePart& part,
                                 bool isThumbnail = false);

/// A new, empty part of a job under a name, and the stream that fills it (null for a document, which has no
/// bytes). maker: the filter that writes it, where that is known. E_NOINTERFACE for a kind that filters
/// cannot make; throws HostError for a name that is not a valid one.
HRESULT MakeNewPart(const SharedContext& context, const std::string& name, REFIID riid, void** part,
                    IPrintWriteStream** stream, const std::shared_ptr<const StreamMaker>& maker = {});

using OvPlatform::FindReferred;
using OvPlatform::ResolveReference;

} // namespace OvPipeline
