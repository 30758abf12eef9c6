#pragma once

/* Whether what is ordered to fail does so once, or from there on. */
enum class Failing { Once, FromThereOn };
