/* Sends the files of maps, whole or in part. */
#pragma once

#include <filesystem>
#include <string>

namespace httplib {
struct Request;
struct Response;
}  // namespace httplib

/* Answers a GET or HEAD for the map file `name` of `folder`: 200, or 206 for a part that the Range header
 * names, 416 when nothing of it is in the file, 404 without such a file. `name` must not lead out of the
 * folder. The bytes are read as they are sent; a transfer that ends early gets a line in the log. Throws
 * std::system_error when the file cannot be opened. The server must not apply ranges itself. */
void ReplyWithMap(const std::filesystem::path& folder, const std::string& name,
                  const httplib::Request& request, httplib::Response& response);
