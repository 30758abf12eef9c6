/* A modal dialog that is made from a template of the resources, fills the screen and has a soft-key menu bar.
 * Its texts are translated. A dialog is made on the stack, shown with DoModal, and ended with its object. */
#pragma once

#include "resources/ResourceIds.h"
#include "text/WideString.h"
#include "ui/Window.h"

#include <initializer_list>

class Dialog : public Window {
public:
    /* `id` is the number of the template; only its low 16 bits name the resource. With 0 there is nothing to
     * show. */
    explicit Dialog(uint32_t id) : templateId(id) {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog() override;

    /* Called before the dialog is shown. TRUE lets the system set the focus. */
    virtual BOOL OnInitDialog(WPARAM /*wParam*/, LPARAM /*lParam*/) { return TRUE; }

    /* Ends the dialog with IDOK. */
    virtual void OnOK();

    /* Called for a message that no other operation here is for; returns the dialog procedure's result. */
    virtual INT_PTR OnMessage(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return 0; }

    /* Called for a command. Calls OnOK for IDOK and OnCancel for IDCANCEL, and ignores all others. */
    virtual void OnDialogCommand(int id, HWND control, int notification);

    virtual void OnDialogNotify(WPARAM /*wParam*/, LPARAM /*lParam*/) {}

    /* Ends the dialog with IDCANCEL. */
    virtual void OnCancel();

    /* Shows the dialog until it is ended, and returns what it was ended with. IDCANCEL at once when
     * `templateId` is 0. -1 when the dialog cannot be shown or an operation threw: a box, owned by `parent`,
     * tells the number of the template and the system's error code. When the menu bar cannot be made, a box
     * of its own says so before that one. Both boxes are in English. `failure`, and the last error after -1,
     * have the code of what went wrong first. 0 when the window was destroyed without having been ended, by
     * its owner's end for instance. Throws std::bad_alloc when there is no memory for the text of the last
     * box. */
    int DoModal(HWND parent);

    /* The text of a control. If there is no such control nothing is set, and the text got is empty. */
    void SetItemText(int id, const WideString& text);
    [[nodiscard]] WideString GetItemText(int id) const;

    /* The controls let the user type no more than `units` code units. */
    void LimitItemTexts(std::initializer_list<int> ids, int units) const;

    /* Sets the text of the menu bar's button for `command`, untranslated. Does nothing without a menu bar. */
    void SetMenuBarButtonText(int command, const WideString& text);

    uint32_t templateId;
    HMENU commandMenu = nullptr;                /* the menu bar's; null until the bar is made */
    HWND menuBarWindow = nullptr;               /* null until it is made */
    bool overrideBackKey = true;                /* the Back key deletes a character in the focused control */
    DWORD initFlags = SHIDIF_SIZEDLGFULLSCREEN; /* of SHInitDialog */
    uint32_t menuBarId = DONE_CANCEL_MENU_BAR;  /* 0: no menu bar */

private:
    static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    int Run(HWND parent);
    bool Bind(HWND dialog);
    INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    BOOL Prepare(WPARAM wParam, LPARAM lParam);
    bool CreateMenuBar();
    void PrepareMenuBar();
};
