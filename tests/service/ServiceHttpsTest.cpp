#include <gmock/gmock.h>
#include <httplib.h>

#include "CertificateFiles.h"
#include "ServiceProcess.h"
#include "TemporaryFolder.h"
#include "WireBytes.h"

using testing::HasSubstr;

namespace {

class ServiceHttps : public testing::Test {
protected:
    ServiceHttps() { WriteCertificateFiles(folder.Path()); }

    [[nodiscard]] std::string In(const char* name) const { return (folder.Path() / name).string(); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(ServiceHttps, SearchIsAnsweredToAClientThatTrustsTheCertificate) {
    ServiceProcess service({"--port", "0", "--data", In("data"), "--made-up", "1", "--certificate",
                            In("certificate.pem"), "--private-key", In("key.pem")});
    httplib::SSLClient client("127.0.0.1", service.WaitForPort());
    client.set_ca_cert_path(In("certificate.pem"));
    client.enable_server_certificate_verification(true);
    const httplib::Result reply = client.Post(
        "/cgi-bin/mapstore.cgi", SearchBytes({{9000000, 0, 9000000, 0}}), "application/octet-stream");
    ASSERT_TRUE(reply) << httplib::to_string(reply.error());
    EXPECT_EQ(reply->status, 200);
    EXPECT_EQ(reply->body, Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(1));
    client.stop();
    EXPECT_EQ(service.End(), 0);
}

TEST_F(ServiceHttps, MissingCertificateIsRefused) {
    ServiceProcess service({"--port", "0", "--data", In("data"), "--certificate", In("none.pem"),
                            "--private-key", In("key.pem")});
    EXPECT_EQ(service.WaitForEnd(), 1);
    EXPECT_EQ(service.Output(), "");
    EXPECT_THAT(service.Errors(), HasSubstr("the certificate '" + In("none.pem") + "' cannot be used"));
}

TEST_F(ServiceHttps, KeyOfAnotherCertificateIsRefused) {
    const TemporaryFolder other;
    WriteCertificateFiles(other.Path());
    ServiceProcess service({"--port", "0", "--data", In("data"), "--certificate", In("certificate.pem"),
                            "--private-key", (other.Path() / "key.pem").string()});
    EXPECT_EQ(service.WaitForEnd(), 1);
    EXPECT_THAT(service.Errors(), HasSubstr("cannot be used with the private key"));
}
