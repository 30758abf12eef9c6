#include "CertificateFiles.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

template <auto release>
struct Release {
    template <class Type>
    void operator()(Type* held) const {
        release(held);
    }
};

using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Release<X509_EXTENSION_free>>;
using File = std::unique_ptr<std::FILE, Release<std::fclose>>;

void Require(bool worked) {
    if (!worked) throw std::runtime_error("no certificate for the test");
}

Certificate SelfSigned(EVP_PKEY* key) {
    constexpr long day = 24L * 60 * 60;
    Certificate certificate(X509_new());
    Require(certificate != nullptr);
    Require(X509_set_version(certificate.get(), 2) == 1);
    Require(ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1) == 1);
    Require(X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -day) != nullptr);
    Require(X509_gmtime_adj(X509_getm_notAfter(certificate.get()), day) != nullptr);
    Require(X509_set_pubkey(certificate.get(), key) == 1);
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    const std::string commonName = "127.0.0.1";
    Require(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                                       reinterpret_cast<const unsigned char*>(commonName.c_str()), -1, -1,
                                       0) == 1);
    Require(X509_set_issuer_name(certificate.get(), name) == 1);
    const Extension address(X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, "IP:127.0.0.1"));
    Require(address != nullptr && X509_add_ext(certificate.get(), address.get(), -1) == 1);
    Require(X509_sign(certificate.get(), key, EVP_sha256()) > 0);
    return certificate;
}

}  // namespace

void WriteCertificateFiles(const std::filesystem::path& folder) {
    const Key key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    Require(key != nullptr);
    const Certificate certificate = SelfSigned(key.get());
    const File certificateFile(std::fopen((folder / "certificate.pem").c_str(), "w"));
    Require(certificateFile != nullptr && PEM_write_X509(certificateFile.get(), certificate.get()) == 1);
    const File keyFile(std::fopen((folder / "key.pem").c_str(), "w"));
    Require(keyFile != nullptr &&
            PEM_write_PrivateKey(keyFile.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) == 1);
}
