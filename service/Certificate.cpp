// SPDX-License-Identifier: MIT
#include "service/Certificate.h"

#include "service/PrivateFile.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <ctime>
#include <memory>

namespace service {

namespace {

constexpr long kDay = 86400;
constexpr long kLifeSeconds = 3650 * kDay;
constexpr std::time_t kRenewBefore = 7 * kDay;

template <auto release> struct Release {
    template <typename Object> void operator()(Object* object) const { release(object); }
};
using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Release<X509_EXTENSION_free>>;
using Memory = std::unique_ptr<BIO, Release<BIO_free_all>>;

bool AddExtension(X509* certificate, int kind, const char* value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
    return extension && X509_add_ext(certificate, extension.get(), -1) == 1;
}

Certificate MakeCertificate(EVP_PKEY* key)
{
    Certificate certificate(X509_new());
    unsigned char serial[8];
    if (!certificate || RAND_bytes(serial, sizeof serial) != 1) {
        return nullptr;
    }
    X509* x = certificate.get();
    std::uint64_t number = 0;
    for (const unsigned char byte : serial) {
        number = (number << 8) | byte;
    }
    X509_NAME* name = X509_get_subject_name(x);
    const auto* common = reinterpret_cast<const unsigned char*>("localhost");
    const bool good =
        X509_set_version(x, 2) == 1 && ASN1_INTEGER_set_uint64(X509_get_serialNumber(x), number >> 1) == 1 &&
        X509_gmtime_adj(X509_getm_notBefore(x), -kDay) != nullptr &&
        X509_gmtime_adj(X509_getm_notAfter(x), kLifeSeconds) != nullptr &&
        X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, common, -1, -1, 0) == 1 &&
        X509_set_issuer_name(x, name) == 1 && X509_set_pubkey(x, key) == 1 &&
        AddExtension(x, NID_basic_constraints, "critical,CA:TRUE") &&
        AddExtension(x, NID_key_usage, "critical,digitalSignature,keyCertSign") &&
        AddExtension(x, NID_ext_key_usage, "serverAuth") && AddExtension(x, NID_subject_key_identifier, "hash") &&
        AddExtension(x, NID_subject_alt_name, "DNS:localhost,IP:127.0.0.1,IP:0:0:0:0:0:0:0:1") &&
        X509_sign(x, key, EVP_sha256()) > 0;
    return good ? std::move(certificate) : nullptr;
}

std::string TextOf(BIO* memory)
{
    char* bytes = nullptr;
    const long length = BIO_get_mem_data(memory, &bytes);
    return length > 0 ? std::string(bytes, static_cast<std::size_t>(length)) : std::string();
}

bool Make(const CertificateFiles& files)
{
    // EVP_EC_gen casts its text in a way that some compilers warn of.
    const Key key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    const Certificate certificate = key ? MakeCertificate(key.get()) : nullptr;
    const Memory keyText(BIO_new(BIO_s_mem()));
    const Memory certificateText(BIO_new(BIO_s_mem()));
    if (!certificate || !keyText || !certificateText ||
        PEM_write_bio_PrivateKey(keyText.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) != 1 ||
        PEM_write_bio_X509(certificateText.get(), certificate.get()) != 1) {
        return false;
    }
    return WritePrivateFile(files.key, TextOf(keyText.get())) &&
           WritePrivateFile(files.certificate, TextOf(certificateText.get()));
}

bool Usable(const CertificateFiles& files)
{
    std::string keyText;
    std::string certificateText;
    if (!ReadFile(files.key, keyText) || !ReadFile(files.certificate, certificateText)) {
        return false;
    }
    const Memory keyMemory(BIO_new_mem_buf(keyText.data(), static_cast<int>(keyText.size())));
    const Memory memory(BIO_new_mem_buf(certificateText.data(), static_cast<int>(certificateText.size())));
    const Key key(PEM_read_bio_PrivateKey(keyMemory.get(), nullptr, nullptr, nullptr));
    const Certificate certificate(PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr));
    std::time_t soon = std::time(nullptr) + kRenewBefore;
    return key && certificate && X509_check_private_key(certificate.get(), key.get()) == 1 &&
           X509_cmp_time(X509_get0_notAfter(certificate.get()), &soon) > 0 &&
           X509_cmp_current_time(X509_get0_notBefore(certificate.get())) < 0;
}

} // namespace

std::string EnsureCertificate(const std::string& folder, CertificateFiles& files)
{
    files.certificate = folder + "/certificate.pem";
    files.key = folder + "/certificate-key.pem";
    if (Usable(files) || Make(files)) {
        return {};
    }
    return "no certificate can be made in " + folder;
}

} // namespace service
