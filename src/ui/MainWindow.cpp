#include "ui/MainWindow.h"

#include "ui/WelcomeView.h"

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_welcomeView(new WelcomeView(this))
{
    setWindowTitle(QStringLiteral("Quillo"));
    setCentralWidget(m_welcomeView);
    resize(960, 640);
}
