#pragma once

#include <QIcon>
#include <QWidget>
#include <functional>

#include "settings/option_pages.h"

class QCheckBox;
class QLabel;
class QVBoxLayout;

namespace lore {

class Theme;

/// A part of a page: its title above its controls, which `body` takes.
QWidget* MakeOptionSection(const QString& title, const Theme& theme, QVBoxLayout*& body, QWidget* parent);
/// A box to tick, named after its option.
QCheckBox* MakeOptionBox(const OptionBox& box, bool on, const std::function<void(bool)>& changed, QWidget* parent);
/// A line of second-rank words that wraps.
QLabel* MakeRemark(const QString& text, const Theme& theme, QWidget* parent);
/// Gives a label that wraps so many characters of width, and the room for all its lines at that width, which a layout
/// inside another one doesn't ask for.
void KeepWhole(QLabel& label, int characters);
/// A thin line between two sections.
QWidget* MakeRule(const Theme& theme, QWidget* parent);
/// A square in a colour (red in the low byte), with an edge.
QIcon MakeSwatch(uint32_t color, const Theme& theme, const QWidget& shownIn);
/// Gives each button and each label with a control an Alt key that no other on the page has, none of `taken`.
void GiveAltKeys(QWidget& page, const QString& taken);

}  // namespace lore
