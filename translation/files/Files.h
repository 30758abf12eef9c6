/* Files that the commands read and write, whole. */
#pragma once

#include "files/Catalogue.h"
#include "files/Complaint.h"

#include <string>
#include <string_view>

/* The bytes of a file. Throws UsageError when there is none, it cannot be read, or it is larger than 4 MB. */
std::string ReadFile(const std::string& path);

/* Writes a file whole or not at all: what stood there stays until all is written. "-" is the standard output.
 * Throws UsageError. */
void WriteFile(const std::string& path, std::string_view bytes);

enum class FileForm { Language, Table, Po };

/* The form that a name's ending tells: .po and .pot; .tsv, a table; .txt or "-", a language file. Throws
 * UsageError for other endings. */
FileForm FormToWrite(const std::string& path);

/* The form that a name's ending tells of a file to be read: .po and .pot; .tsv; all others are language
 * files. */
FileForm FormToRead(const std::string& path);

/* The catalogue of a file of any form. Tables and language files are told apart by their bytes. */
Catalogue ReadCatalogue(const std::string& path, Complaints& complaints);

/* Writes in the form that the name tells (FormToWrite). CR and NUL in texts, which the library could not
 * show, are complained of. With complaints nothing is written. */
void WriteCatalogue(const std::string& path, const Catalogue& catalogue, Complaints& complaints);

/* Complains as WriteCatalogue does, and writes nothing. */
void CheckCatalogue(const std::string& path, const Catalogue& catalogue, Complaints& complaints);
