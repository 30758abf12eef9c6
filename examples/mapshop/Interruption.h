/* Lets work in progress ask whether Ctrl-C has been pressed. */
#pragma once

/* While an object of this class lives, the first Ctrl-C or Ctrl-Break only makes Wanted() true; another one
 * ends the program at once. Only one object may live at a time. */
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /* Whether the user has interrupted the program since the object was made. */
    [[nodiscard]] bool Wanted() const;
};
