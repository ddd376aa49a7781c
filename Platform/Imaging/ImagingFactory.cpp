#include "Com/ClassTable.h"
#include "Com/CountedObject.h"
#include "Com/Guarded.h"
#include "Imaging/BitmapDecoder.h"
#include "Imaging/BitmapEncoder.h"
#include "Imaging/ImagingStream.h"

#include <atlcomcli.h>
#include <wincodec.h>

namespace OvPlatform {
namespace {

class ImagingFactory final : public CountedObject<IWICImagingFactory> {
public:
    static HRESULT Create(REFIID riid, void** object) {
        return OrOutOfMemory([&] {
            CComPtr<ImagingFactory> factory;
            factory.Attach(new ImagingFactory);
            return factory->QueryInterface(riid, object);
        });
    }

    HRESULT STDMETHODCALLTYPE CreateDecoderFromFilename(LPCWSTR filename, const GUID* vendor, DWORD access,
                                                        WICDecodeOptions options,
                                                        IWICBitmapDecoder** decoder) override {
        if (decoder == nullptr) return E_INVALIDARG;
        *decoder = nullptr;
        CComPtr<IWICStream> stream;
        HRESULT result = CreateStream(&stream);
        if (SUCCEEDED(result)) result = stream->InitializeFromFilename(filename, access);
        return SUCCEEDED(result) ? CreateDecoderFromStream(stream, vendor, options, decoder) : result;
    }

    HRESULT STDMETHODCALLTYPE CreateDecoderFromStream(IStream* stream, const GUID*, WICDecodeOptions options,
                                                      IWICBitmapDecoder** decoder) override {
        if (stream == nullptr || decoder == nullptr) return E_INVALIDARG;
        *decoder = nullptr;
        return Guarded([&] {
            CComPtr<IWICBitmapDecoder> made;
            made.Attach(new BitmapDecoder);
            const HRESULT result = made->Initialize(stream, options);
            if (SUCCEEDED(result)) *decoder = made.Detach();
            return result;
        });
    }

    /// PNG alone: WINCODEC_ERR_COMPONENTNOTFOUND for any other container. Whose encoder it is to be is not
    /// asked.
    HRESULT STDMETHODCALLTYPE CreateEncoder(REFGUID containerFormat, const GUID*,
                                            IWICBitmapEncoder** encoder) override {
        if (encoder == nullptr) return E_INVALIDARG;
        *encoder = nullptr;
        return Guarded([&] {
            if (containerFormat != GUID_ContainerFormatPng) return WINCODEC_ERR_COMPONENTNOTFOUND;
            *encoder = new BitmapEncoder;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE CreateStream(IWICStream** stream) override {
        if (stream == nullptr) return E_INVALIDARG;
        *stream = nullptr;
        return Guarded([&] {
            *stream = new ImagingStream;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE CreateDecoderFromFileHandle(ULONG_PTR, const GUID*, WICDecodeOptions,
                                                          IWICBitmapDecoder**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateComponentInfo(REFCLSID, IWICComponentInfo**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateDecoder(REFGUID, const GUID*, IWICBitmapDecoder**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePalette(IWICPalette**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateFormatConverter(IWICFormatConverter**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateBitmapScaler(IWICBitmapScaler**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateBitmapClipper(IWICBitmapClipper**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateBitmapFlipRotator(IWICBitmapFlipRotator**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateColorContext(IWICColorContext**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateColorTransformer(IWICColorTransform**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateBitmap(UINT, UINT, REFWICPixelFormatGUID, WICBitmapCreateCacheOption,
                                           IWICBitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromSource(IWICBitmapSource*, WICBitmapCreateCacheOption,
                                                     IWICBitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromSourceRect(IWICBitmapSource*, UINT, UINT, UINT, UINT,
                                                         IWICBitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromMemory(UINT, UINT, REFWICPixelFormatGUID, UINT, UINT, BYTE*,
                                                     IWICBitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromHBITMAP(HBITMAP, HPALETTE, WICBitmapAlphaChannelOption,
                                                      IWICBitmap**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateBitmapFromHICON(HICON, IWICBitmap**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateComponentEnumerator(DWORD, DWORD, IEnumUnknown**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateFastMetadataEncoderFromDecoder(IWICBitmapDecoder*,
                                                                   IWICFastMetadataEncoder**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateFastMetadataEncoderFromFrameDecode(IWICBitmapFrameDecode*,
                                                                       IWICFastMetadataEncoder**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateQueryWriter(REFGUID, const GUID*, IWICMetadataQueryWriter**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateQueryWriterFromReader(IWICMetadataQueryReader*, const GUID*,
                                                          IWICMetadataQueryWriter**) override {
        return E_NOTIMPL;
    }
};

const ClassRegistration registration(CLSID_WICImagingFactory2, &ImagingFactory::Create);

} // namespace
} // namespace OvPlatform
