/* What is wrong with the lines of a language file or table, whatever their texts are. */
#pragma once

#include "files/Complaint.h"
#include "files/TableFile.h"

#include <map>
#include <string>
#include <string_view>

/* Complains of records that the library reads as something else than is meant: double quotes that it drops,
 * two different translations of one text, and further TABs. */
void CheckRecords(const TableText& table, Complaints& complaints);

/* The numbers of the lines that have an empty translation, and their texts. */
std::map<size_t, WideString> FindEmptyTranslations(const TableText& table);

/* Complains of an encoding that the library does not understand, and tells what it would show and how the
 * file of these bytes, `path`, is mended. */
void CheckEncoding(const std::string& path, std::string_view bytes, const TableText& table,
                   Complaints& complaints);

/* Complains of a table whose characters are a guess: neither UTF-8 nor UTF-16, but bytes of some code
 * page. */
void CheckTableEncoding(const TableText& table, Complaints& complaints);
