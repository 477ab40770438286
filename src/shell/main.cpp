#include <memory>

#include "shell/application.h"
#include "shell/main_window.h"

int main(int argc, char** argv) {
  veldrin::shell::Application application(argc, argv);
  veldrin::shell::StartUp startUp;
  const auto makeMainWindow = [&startUp]() -> std::unique_ptr<QWidget> {
    auto window =
        std::make_unique<veldrin::shell::frmMain>(startUp.Program(), startUp.Paths(), startUp.Engine());
    window->Form_Load();
    return window;
  };
  if (!startUp.Main(makeMainWindow)) return 0;
  return veldrin::shell::Application::exec();
}
