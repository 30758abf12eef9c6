/* A modal dialog that is made from a template of the resources, fills the screen and has a soft-key menu bar.
 * Its texts are translated. A dialog is made on the stack, shown with DoModal, and goes with its object. */
#pragma once

#include "resources/ResourceIds.h"
#include "text/WideString.h"
#include "ui/Window.h"

class Dialog : public Window {
public:
    /* `id` is the number of the template; only its low 16 bits name the resource. With 0 there is nothing to
     * show. */
    explicit Dialog(uint32_t id) : templateId(id) {}

    ~Dialog() override;

    /* Before the dialog is shown. TRUE lets the system set the focus. */
    virtual BOOL OnInitDialog(WPARAM /*wParam*/, LPARAM /*lParam*/) { return TRUE; }

    /* Ends the dialog with IDOK. */
    virtual void OnOK();

    /* A message that nothing else is made of; the dialog procedure's result. */
    virtual INT_PTR OnMessage(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return 0; }

    /* A command: IDOK becomes OnOK, IDCANCEL OnCancel, the rest is ignored. */
    virtual void OnDialogCommand(int id, HWND control, int notification);

    virtual void OnDialogNotify(WPARAM /*wParam*/, LPARAM /*lParam*/) {}

    /* Ends the dialog with IDCANCEL. */
    virtual void OnCancel();

    /* Shows the dialog until it is ended, and gives what it was ended with. IDCANCEL at once when there is no
     * template id. -1 when the dialog cannot be shown or an operation threw: a box, owned by `parent`, gives
     * the number of the template and the system's error code. A menu bar that cannot be made has a box of its
     * own before that one. Both boxes are in English. Throws std::bad_alloc when there is no memory for that
     * text. */
    int DoModal(HWND parent);

    /* The text of a control. For a control that is not there: nothing is set, and an empty text. */
    void SetItemText(int id, const WideString& text);
    [[nodiscard]] WideString GetItemText(int id) const;

    /* The text of the menu bar's button with that command, in this language already. Nothing without a menu
     * bar. */
    void SetMenuBarButtonText(int command, const WideString& text);

    uint32_t templateId;
    HMENU commandMenu = nullptr;                /* the menu bar's; none until the bar is made */
    HWND menuBarWindow = nullptr;               /* none until it is made */
    bool overrideBackKey = true;                /* the Back key deletes in the focused control */
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
