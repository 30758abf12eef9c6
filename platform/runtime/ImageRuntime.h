/* What an image's entry point does around the program: the compiler's start-up code, of which there is none
 * for Windows CE, and for Windows one that is made for more than a DLL like this. */
#pragma once

/* Runs the constructors of the objects that live as long as the image. False: one of them threw an exception;
 * or memory ran out on the way, even if only for the reserve from which exceptions are thrown when there is
 * no other memory; or there are more than 32 objects to be destroyed. The image must not go on then; EndImage
 * destroys what was made. */
bool BeginImage() noexcept;

/* Runs the destructors of all that has been constructed, last ones first, and gives the reserve back. */
void EndImage() noexcept;

/* What compilers call for every constructed object that has a destructor: EndImage will run it. 0, or -1 when
 * there is no room for it. */
int DestroyAtEnd(void* object, void (*destroy)(void*)) noexcept;
