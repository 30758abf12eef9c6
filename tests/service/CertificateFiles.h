/* A certificate for 127.0.0.1 that vouches for itself. */
#pragma once

#include <filesystem>

/* Writes "certificate.pem" and "key.pem" into `folder`, with a new key. */
void WriteCertificateFiles(const std::filesystem::path& folder);
