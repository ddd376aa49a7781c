#pragma once

// URIs as objects, as the SDK header of this name publishes them: the interface that part names extend.

#include <windows.h>

enum Uri_PROPERTY {
    Uri_PROPERTY_ABSOLUTE_URI = 0,
    Uri_PROPERTY_STRING_START = Uri_PROPERTY_ABSOLUTE_URI,
    Uri_PROPERTY_AUTHORITY = 1,
    Uri_PROPERTY_DISPLAY_URI = 2,
    Uri_PROPERTY_DOMAIN = 3,
    Uri_PROPERTY_EXTENSION = 4,
    Uri_PROPERTY_FRAGMENT = 5,
    Uri_PROPERTY_HOST = 6,
    Uri_PROPERTY_PASSWORD = 7,
    Uri_PROPERTY_PATH = 8,
    Uri_PROPERTY_PATH_AND_QUERY = 9,
    Uri_PROPERTY_QUERY = 10,
    Uri_PROPERTY_RAW_URI = 11,
    Uri_PROPERTY_SCHEME_NAME = 12,
    Uri_PROPERTY_USER_INFO = 13,
    Uri_PROPERTY_USER_NAME = 14,
    Uri_PROPERTY_STRING_LAST = Uri_PROPERTY_USER_NAME,
    Uri_PROPERTY_HOST_TYPE = 15,
    Uri_PROPERTY_DWORD_START = Uri_PROPERTY_HOST_TYPE,
    Uri_PROPERTY_PORT = 16,
    Uri_PROPERTY_SCHEME = 17,
    Uri_PROPERTY_ZONE = 18,
    Uri_PROPERTY_DWORD_LAST = Uri_PROPERTY_ZONE
};

enum Uri_HOST_TYPE {
    Uri_HOST_UNKNOWN = 0,
    Uri_HOST_DNS = 1,
    Uri_HOST_IPV4 = 2,
    Uri_HOST_IPV6 = 3,
    Uri_HOST_IDN = 4
};

#define URL_SCHEME_UNKNOWN 0
#define URLZONE_INVALID (-1)

// A text that the URI lacks is an empty BSTR and S_FALSE; a number that it lacks is 0 and S_FALSE.
MIDL_INTERFACE("a39ee748-6a27-4817-a6f2-13914bef5890") IUri : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetPropertyBSTR(Uri_PROPERTY property, BSTR * text, DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropertyLength(Uri_PROPERTY property, DWORD * length,
                                                        DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropertyDWORD(Uri_PROPERTY property, DWORD * value, DWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE HasProperty(Uri_PROPERTY property, BOOL * has) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAbsoluteUri(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAuthority(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDisplayUri(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDomain(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetExtension(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFragment(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHost(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPassword(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPath(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPathAndQuery(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetQuery(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetRawUri(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSchemeName(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetUserInfo(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetUserName(BSTR * text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHostType(DWORD * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPort(DWORD * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetScheme(DWORD * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetZone(DWORD * value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProperties(LPDWORD flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE IsEqual(IUri * other, BOOL * equal) = 0;
};
__CRT_UUID_DECL(IUri, 0xa39ee748, 0x6a27, 0x4817, 0xa6, 0xf2, 0x13, 0x91, 0x4b, 0xef, 0x58, 0x90)
