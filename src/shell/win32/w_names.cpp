// An object that passes every question on to the one that the window system has for the window, but
// for the name and what the window shows.
#include "shell/win32/w_names.h"

#include <ole2.h>

#include <oleacc.h>

#include <array>
#include <atomic>

#include "editor/outline.h"
#include "shell/picture_windows.h"
#include "shell/win32/w_guard.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

bool about_itself(const VARIANT &child) {
  return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

HRESULT answer_text(const std::wstring &text, BSTR *out) {
  *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

// It may live longer than its window, so it knows that by its number.
class Described : public IAccessible {
public:
  Described(WindowId win, IAccessible *system) : win_(win), system_(system) {}
  virtual ~Described() { system_->Release(); }
  Described(const Described &) = delete;
  Described &operator=(const Described &) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void **out) override {
    if (id != __uuidof(IUnknown) && id != __uuidof(IDispatch) && id != __uuidof(IAccessible)) {
      *out = nullptr;
      return E_NOINTERFACE;
    }
    *out = static_cast<IAccessible *>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --count_;
    if (left == 0)
      delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR *out) override {
    const Window *window = find_window(win_);
    if (!about_itself(child) || window == nullptr)
      return system_->get_accName(child, out);
    std::array<wchar_t, 256> title{};
    InternalGetWindowText(window->hwnd, title.data(), static_cast<int>(title.size()));
    return answer_text(title.data(), out);
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR *out) override {
    std::wstring text;
    run_step([&] {
      if (const WinInfo *wi = about_itself(child) ? picture_of(win_) : nullptr)
        text = widen(picture_outline(wi));
    });
    return text.empty() ? system_->get_accDescription(child, out) : answer_text(text, out);
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT *out) override {
    const Window *window = find_window(win_);
    if (!about_itself(child) || window == nullptr || window->edit != nullptr)
      return system_->get_accRole(child, out);
    out->vt = VT_I4;
    out->lVal = ROLE_SYSTEM_GRAPHIC;
    return S_OK;
  }

  // The rest is the system's.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *count) override {
    return system_->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT which, LCID lcid, ITypeInfo **out) override {
    return system_->GetTypeInfo(which, lcid, out);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR *names, UINT count, LCID lcid,
                                          DISPID *out) override {
    return system_->GetIDsOfNames(id, names, count, lcid, out);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID lcid, WORD flags,
                                   DISPPARAMS *params, VARIANT *out, EXCEPINFO *info,
                                   UINT *wrong) override {
    return system_->Invoke(member, id, lcid, flags, params, out, info, wrong);
  }
  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch **out) override {
    return system_->get_accParent(out);
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(long *out) override {
    return system_->get_accChildCount(out);
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch **out) override {
    return system_->get_accChild(child, out);
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR *out) override {
    return system_->get_accValue(child, out);
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT *out) override {
    return system_->get_accState(child, out);
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR *out) override {
    return system_->get_accHelp(child, out);
  }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR *file, VARIANT child, long *out) override {
    return system_->get_accHelpTopic(file, child, out);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR *out) override {
    return system_->get_accKeyboardShortcut(child, out);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT *out) override {
    return system_->get_accFocus(out);
  }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT *out) override {
    return system_->get_accSelection(out);
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR *out) override {
    return system_->get_accDefaultAction(child, out);
  }
  HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override {
    return system_->accSelect(flags, child);
  }
  HRESULT STDMETHODCALLTYPE accLocation(long *left, long *top, long *width, long *height,
                                        VARIANT child) override {
    return system_->accLocation(left, top, width, height, child);
  }
  HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT *out) override {
    return system_->accNavigate(direction, start, out);
  }
  HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT *out) override {
    return system_->accHitTest(x, y, out);
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
    return system_->accDoDefaultAction(child);
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override {
    return system_->put_accName(child, name);
  }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
    return system_->put_accValue(child, value);
  }

private:
  WindowId win_;
  IAccessible *system_;
  std::atomic<ULONG> count_{1};
};

} // namespace

// The answers go to the other program by the system's own calls between programs.
void let_windows_be_described() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
}

bool describe(const Window &window, HWND part, WPARAM wparam, LPARAM lparam, LRESULT &answer) {
  void *system = nullptr;
  if (static_cast<LONG>(lparam) != static_cast<LONG>(OBJID_CLIENT) ||
      CreateStdAccessibleObject(part, OBJID_CLIENT, __uuidof(IAccessible), &system) != S_OK)
    return false;
  auto *described = new Described(window.id, static_cast<IAccessible *>(system));
  answer = LresultFromObject(__uuidof(IAccessible), wparam, described);
  described->Release();
  return SUCCEEDED(static_cast<HRESULT>(answer));
}

} // namespace velora::win32
