/* The commands of orvande-translation. Each takes its arguments, prints what it has to say, and returns the
 * exit code: 0 all is well, 1 a file has mistakes, which are printed. Throws UsageError for everything that
 * keeps it from its work; of several files, `check` prints that, goes on, and returns 2. */
#pragma once

#include <span>
#include <string>

using Arguments = std::span<const std::string>;

/* template [--language NAME] [--output FILE] */
int RunTemplate(Arguments arguments);

/* check FILE... */
int RunCheck(Arguments arguments);

/* convert IN OUT */
int RunConvert(Arguments arguments);

/* merge OLD NEW [--output FILE] */
int RunMerge(Arguments arguments);

/* pseudo [--output FILE] */
int RunPseudo(Arguments arguments);
