/* Those of the library's process-wide objects that the account needs, in the library's order. Nothing is
 * downloaded here, so that no internet session is opened when the DLL is loaded. */
#include "frame/ResourceModule.h"
#include "transport/NetworkConnection.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"
#include "ui/Window.h"

TranslationCatalogue translationCatalogue;
WindowBindingTable windowBindings(Window::wndProc);
WideString messageBoxCaption;
HINSTANCE ownModule = nullptr;
HINSTANCE resourceModule = nullptr;
HANDLE managedConnection = nullptr;
