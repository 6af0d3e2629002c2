#pragma once

#include <QMainWindow>

class WelcomeView;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);

    WelcomeView *welcomeView() const { return m_welcomeView; }

private:
    WelcomeView *m_welcomeView;
};
