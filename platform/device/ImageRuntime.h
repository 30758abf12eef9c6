/* What an image's entry point does around the program: the compiler's start-up code for Windows CE. */
#pragma once

/* Runs the constructors of the objects that live as long as the image. False: memory ran out on the way, even for
 * the reserve from which exceptions are thrown when there is no other memory; the image must not go on. */
bool BeginImage() noexcept;

/* Runs the destructors of everything that has been constructed, last ones first, and gives the reserve back. */
void EndImage() noexcept;
