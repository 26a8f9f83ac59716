#pragma once

/// The widget toolkit, whole: windows, widgets, layout and graphics drawn over an OpenGL picture and fed by
/// GLUT mouse input. README.md beside this file has the concepts on one page.
///
///     wt::wtWindowManager::init(width, height, false);
///     wt::loadDefaults(width, height);
///     auto* window = new wt::wtWindow("Panel", {-0.4f, -0.5f}, {0.8f, 0.9f}, 0x101);
///     wt::wtWindowManager::appendWidget(window);          // owns it from here on
///     ... every frame: wt::wtWindowManager::displayWidgets(); wt::wtWindowManager::animate();
///
/// Everything here belongs to the one thread that has the OpenGL context.

#include "platform/wt/Align.h"
#include "platform/wt/Color.h"
#include "platform/wt/Defaults.h"
#include "platform/wt/GridGraphic.h"
#include "platform/wt/LinearLayout.h"
#include "platform/wt/Polygon.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Symbols.h"
#include "platform/wt/Theme.h"
#include "platform/wt/wtButton.h"
#include "platform/wt/wtListBox.h"
#include "platform/wt/wtStaticText.h"
#include "platform/wt/wtWidget.h"
#include "platform/wt/wtWindow.h"
#include "platform/wt/wtWindowManager.h"
