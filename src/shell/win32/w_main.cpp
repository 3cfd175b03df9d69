// The desktop program: registers the window classes, opens the frame and the console, starts the
// language and runs the message loop. The modes of other programs are not here.
#include <cstdio>
#include <filesystem>
#include <string>

#include "core/events.h"
#include "eval/registry.h"
#include "platform/console.h"
#include "platform/response.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/vel_wins.h"
#include "shell/win32/resource.h"
#include "shell/win32/w_desktop.h"
#include "shell/win32/w_dialogs.h"
#include "shell/win32/w_libraries.h"
#include "shell/win32/w_names.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_script.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"
#include "shell/window_desktop.h"

namespace velora::win32 {

namespace {

struct ClassRow {
  const wchar_t *name;
  WNDPROC proc;
  const wchar_t *icon;
  UINT style;
  bool own_cursor; // the windows set the cursor themselves
};

constexpr UINT kRedraw = CS_HREDRAW | CS_VREDRAW;
// In the order of the window kinds, from 1 on.
const ClassRow kClasses[] = {
    {L"FunctionChild", VeloraWndProc, L"FunIcon", kRedraw | CS_DBLCLKS, true},
    {L"DataChild", VeloraWndProc, L"ConIcon", kRedraw | CS_DBLCLKS, true},
    {L"NetworkChild", VeloraWndProc, L"NetIcon", kRedraw | CS_DBLCLKS, true},
    {L"ControlChild", TextWndProc, L"CtrlIcon", kRedraw, false},
    {L"OrvekChild", TextWndProc, L"TextIcon", kRedraw, false},
    {L"GraphicChild", GraphicWndProc, L"TextIcon", kRedraw, false},
    {L"NarChild", TextWndProc, L"TextIcon", kRedraw, false},
    {L"AnnChild", TextWndProc, L"TextIcon", kRedraw, false},
};

bool register_class(const ClassRow &row, HBRUSH background) {
  WNDCLASSEXW made{};
  made.cbSize = sizeof made;
  made.style = row.style;
  made.lpfnWndProc = row.proc;
  made.hInstance = hInst;
  made.hIcon = LoadIconW(hInst, row.icon);
  made.hCursor = row.own_cursor ? nullptr : LoadCursorW(nullptr, IDC_ARROW);
  made.hbrBackground = background;
  made.lpszClassName = row.name;
  made.hIconSm =
      static_cast<HICON>(LoadImageW(hInst, row.icon, IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                    GetSystemMetrics(SM_CYSMICON), LR_SHARED));
  return RegisterClassExW(&made) != 0;
}

// How many bytes of the stack are left, so that deep evaluation knows its limit.
std::size_t stack_left() {
  ULONG_PTR low = 0;
  ULONG_PTR high = 0;
  GetCurrentThreadStackLimits(&low, &high);
  const auto here = reinterpret_cast<ULONG_PTR>(__builtin_frame_address(0));
  return here - low;
}

// What whoever starts the program asks for in one way or another is left as it is; otherwise the
// frame fills the screen.
bool starts_out_of_sight(int show) {
  return show == SW_HIDE || show == SW_MINIMIZE || show == SW_FORCEMINIMIZE ||
         show == SW_SHOWMINIMIZED || show == SW_SHOWMINNOACTIVE;
}

bool make_frame(int show) {
  hVel = CreateWindowExW(0, L"VELORA", L"" VELORA_TITLE, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                         CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr,
                         nullptr, hInst, nullptr);
  if (hVel == nullptr)
    return false;
  show_bar(MenuBar::main);
  constexpr UINT kTimerEvery = 250; // milliseconds
  SetTimer(hVel, 1, kTimerEvery, nullptr);
  ShowWindow(hVel, starts_out_of_sight(show) ? show : SW_SHOWMAXIMIZED);
  UpdateWindow(hVel);
  return true;
}

// Menus, drawing objects, frame, about box, fonts; the console is made by the program.
bool Initialize(int show, bool with_about) {
  if (!init_menus())
    return false;
  Create_GDI_Objects(hInst);
  if (!make_frame(show))
    return false;
  FontsInitialize();
  if (with_about)
    show_about();
  return true;
}

int message_loop() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0)
    take_message(message);
  return static_cast<int>(message.wParam);
}

// What the program was started with: a database, as a file dropped on it or named after it, and
// before it a script of events.
struct Started {
  std::string script;
  std::string database;
};

Started started_with() {
  int count = 0;
  wchar_t **words = CommandLineToArgvW(GetCommandLineW(), &count);
  Started started;
  for (int i = 1; i < count; ++i) {
    if (std::wstring(words[i]) == L"--events" && i + 1 < count)
      started.script = narrow(words[++i]);
    else
      started.database = narrow(words[i]);
  }
  LocalFree(words);
  return started;
}

int run(int show) {
  static WindowDesktop desktop;
  gDesktop = &desktop;
  gConsole = &gDesktopConsole;
  const Started started = started_with();
  if (!register_classes() || !Initialize(show, started.script.empty())) {
    MessageBoxW(nullptr, L"Sorry - failed", L"Velora", MB_OK | MB_ICONERROR);
    return 1;
  }
  const Libraries libraries;
  gLibDir = libraries.folder();
  gAppDirectory = program_folder();
  gProgressDots = started.script.empty() ? 1 : 0;
  if (!started.script.empty() && !read_script(started.script))
    return 2;
  if (start_desktop(started.database) == 0)
    DestroyWindow(hVel);
  else if (!started.script.empty())
    return run_script();
  return message_loop();
}

} // namespace

bool register_classes() {
  const auto white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  const auto grey = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_APPWORKSPACE + 1));
  if (!register_class({L"VELORA", WndProc, L"VelIcon", kRedraw, false}, grey))
    return false;
  for (const ClassRow &row : kClasses)
    if (!register_class(row, white))
      return false;
  return true;
}

const wchar_t *class_of(WindowKind kind) {
  return kClasses[kind - 1].name;
}

} // namespace velora::win32

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
  using namespace velora;
  win32::hInst = instance;
  set_stack_limit(win32::stack_left());
  const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  win32::let_windows_be_described();
  return win32::run(show);
}
