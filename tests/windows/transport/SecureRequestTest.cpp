/* A request over HTTPS: it reaches the service through a proxy, as 443 of the service's host. */
#include "transport/CgiRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wincrypt.h>

#include <stdexcept>

#include "helpers/ConnectRelay.h"
#include "helpers/LocalFiles.h"
#include "helpers/TestServices.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"

namespace {

/* While one lives, the machine trusts the certificate authority that ORVANDE_TEST_AUTHORITY names. */
class TrustedAuthority {
public:
    TrustedAuthority() {
        const std::string bytes = ContentOf(Widened(Told("ORVANDE_TEST_AUTHORITY")));
        const HCERTSTORE store =
            CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_LOCAL_MACHINE, L"Root");
        PCCERT_CONTEXT certificate = nullptr;
        DWORD size = sizeof hash;
        const bool added =
            CertAddEncodedCertificateToStore(
                store, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(bytes.data()),
                static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_ALWAYS, &certificate) &&
            CertGetCertificateContextProperty(certificate, CERT_SHA1_HASH_PROP_ID, hash, &size);
        CertFreeCertificateContext(certificate);
        // What is added counts when the store is closed.
        CertCloseStore(store, 0);
        if (!added) throw std::runtime_error("the authority cannot be trusted");
    }

    /* By the registry: Wine does not keep a deletion from the store. */
    ~TrustedAuthority() {
        std::wstring key = L"Software\\Microsoft\\SystemCertificates\\Root\\Certificates\\";
        for (const BYTE byteOfHash : hash) {
            key += L"0123456789ABCDEF"[byteOfHash >> 4];
            key += L"0123456789ABCDEF"[byteOfHash & 15];
        }
        EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyW(HKEY_LOCAL_MACHINE, key.c_str()));
    }
    TrustedAuthority(const TrustedAuthority&) = delete;
    TrustedAuthority& operator=(const TrustedAuthority&) = delete;

private:
    BYTE hash[20] = {};
};

class SecureRequest : public testing::Test {
protected:
    ConnectRelay relay{PortTold("ORVANDE_TEST_SECURE_PORT")};
    WebProxy proxy{relay.Port()};
};

/* Asks for every map. */
void WriteSearch(CgiRequest& request) {
    request.WriteInt32(101);
    request.WriteInt32(0);
}

}  // namespace

TEST_F(SecureRequest, BringsTheReplyOfATrustedService) {
    const TrustedAuthority authority;
    CgiRequest request(L"online.orvande.example", L"cgi-bin/mapstore.cgi", false, true);
    WriteSearch(request);
    ASSERT_TRUE(request.SendRequest()) << "Windows error " << GetLastError();
    int32_t status = -1;
    int32_t count = 0;
    int32_t type = 0;
    WideString name;
    request.ReadInt32(status);
    request.ReadInt32(count);
    request.ReadInt32(type);
    request.ReadString(name);
    EXPECT_TRUE(request.good);
    EXPECT_EQ(0, status);
    EXPECT_EQ(1, count);
    EXPECT_EQ(4, type);
    EXPECT_EQ(L"Made-up map 0000001", name);
}

TEST_F(SecureRequest, IsMadeToPort443OfTheHost) {
    const TrustedAuthority authority;
    CgiRequest request(L"online.orvande.example", L"cgi-bin/mapstore.cgi", false, true);
    WriteSearch(request);
    request.SendRequest();
    EXPECT_THAT(relay.TakeRequestLines(), testing::Contains("CONNECT online.orvande.example:443 HTTP/1.1"));
}

TEST_F(SecureRequest, FailsToBeSentToAHostThatTheCertificateDoesNotName) {
    const TrustedAuthority authority;
    CgiRequest request(L"other.orvande.example", L"cgi-bin/mapstore.cgi", false, true);
    WriteSearch(request);
    EXPECT_FALSE(request.SendRequest());
}
