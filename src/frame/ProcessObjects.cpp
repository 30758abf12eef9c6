/* The process-wide objects, together and in their order: they are created from top to bottom when the library
 * is loaded and destroyed from bottom to top when it is unloaded. Each is described where it is declared. */
#include "frame/ResourceModule.h"
#include "transport/InternetHandle.h"
#include "transport/NetworkConnection.h"
#include "transport/WebConnection.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"
#include "ui/Window.h"

TranslationCatalogue translationCatalogue;
InternetHandle sharedSession(InternetOpenW(TEXT("Orvande-SP"), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr,
                                           0));
WindowBindingTable windowBindings(Window::wndProc);
WideString messageBoxCaption;
HINSTANCE ownModule = nullptr;
HINSTANCE resourceModule = nullptr;
bool roamingWarningAccepted = false;
HANDLE managedConnection = nullptr;
