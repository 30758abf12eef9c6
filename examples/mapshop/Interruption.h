/* Ctrl-C, as a question that work in progress can ask. */
#pragma once

/* While one lives, the first Ctrl-C or Ctrl-Break only makes Wanted() true; another one ends the program at
 * once. Not two at a time. */
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /* Whether the user has interrupted the program since the object was made. */
    [[nodiscard]] bool Wanted() const;
};
