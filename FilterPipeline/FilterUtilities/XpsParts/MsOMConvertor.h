#pragma once

// From the pipeline's part objects to memory streams, package URIs and the objects of the document object
// model, under the names of the parts: what is made of a page can be sent on in its place. Each part is
// copied into memory as a whole. Each function throws CPComException with the failing HRESULT; a null
// argument is E_INVALIDARG. Callable on any thread that may use its arguments.

#include "ComSupport/FilterUtilitiesExport.h"

#include <atlcomcli.h>
#include <filterpipeline.h>
#include <msopc.h>
#include <xpsobjectmodel.h>

/// A copy of the part's bytes, positioned at its start. A null part is E_INVALIDARG.
OV_FILTER_UTILITIES_API CComPtr<IStream> GetIStreamFromPart(const CComPtr<IPartBase>& part);

/// A copy in memory of the whole stream, whatever its position was; the copy is positioned at its start. A
/// null reader is E_INVALIDARG.
OV_FILTER_UTILITIES_API CComPtr<IStream>
CreateIStreamFromIPrintReadStream(const CComPtr<IPrintReadStream>& reader);

/// No print ticket is larger than this: it becomes a document, of which a few bytes on disk can make memory
/// without bound. The portable DOM loads no more either.
inline constexpr ULONGLONG mostTicketBytes = ULONGLONG{64} << 20;

/// The same for a print ticket. E_OUTOFMEMORY for one larger than that, before any of it is read.
OV_FILTER_UTILITIES_API CComPtr<IStream> GetIStreamFromTicket(const CComPtr<IPartPrintTicket>& ticket);
OV_FILTER_UTILITIES_API CComPtr<IStream>
CreateIStreamFromTicketStream(const CComPtr<IPrintReadStream>& reader);

/// The part's name as a package URI. A name that is not a valid one throws what the factory says of it; a
/// null part or factory is E_INVALIDARG.
OV_FILTER_UTILITIES_API CComPtr<IOpcPartUri> CreateOpcPartUriFromPart(const CComPtr<IPartBase>& part,
                                                                      const CComPtr<IOpcFactory>& factory);

/// The page with all that it uses, as objects.
OV_FILTER_UTILITIES_API CComPtr<IXpsOMPage>
CreateXpsOMPageFromIFixedPage(const CComPtr<IFixedPage>& page,
                              const CComPtr<IXpsOMObjectFactory>& objectFactory,
                              const CComPtr<IOpcFactory>& opcFactory);

/// The page's fonts, images, colour profiles and resource dictionaries; parts of other kinds are passed over.
/// A dictionary sees the parts of the other kinds, and the dictionaries ahead of it.
OV_FILTER_UTILITIES_API CComPtr<IXpsOMPartResources>
CollectPageResources(const CComPtr<IFixedPage>& page, const CComPtr<IXpsOMObjectFactory>& objectFactory,
                     const CComPtr<IOpcFactory>& opcFactory);

/// E_INVALIDARG for a picture of a type that pages cannot hold.
OV_FILTER_UTILITIES_API CComPtr<IXpsOMImageResource>
CreateImageFromIPartImage(const CComPtr<IPartImage>& part, const CComPtr<IXpsOMObjectFactory>& objectFactory,
                          const CComPtr<IOpcFactory>& opcFactory);

OV_FILTER_UTILITIES_API CComPtr<IXpsOMColorProfileResource>
CreateProfileFromIPartColorProfile(const CComPtr<IPartColorProfile>& part,
                                   const CComPtr<IXpsOMObjectFactory>& objectFactory,
                                   const CComPtr<IOpcFactory>& opcFactory);

/// resources: what the dictionary may refer to.
OV_FILTER_UTILITIES_API CComPtr<IXpsOMRemoteDictionaryResource> CreateDictionaryFromIPartResourceDictionary(
    const CComPtr<IPartResourceDictionary>& part, const CComPtr<IXpsOMObjectFactory>& objectFactory,
    const CComPtr<IOpcFactory>& opcFactory, const CComPtr<IXpsOMPartResources>& resources);

/// The pipeline gives fonts plain, so the options and the restriction of the part say alone how the font is
/// to be embedded.
OV_FILTER_UTILITIES_API CComPtr<IXpsOMFontResource>
CreateFontFromIPartFont(const CComPtr<IPartFont>& part, const CComPtr<IXpsOMObjectFactory>& objectFactory,
                        const CComPtr<IOpcFactory>& opcFactory);
