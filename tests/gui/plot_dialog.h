/// A dialog as applications have it for plotting, and its look.
#pragma once

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/window.h>

#include <platen/gui_look.h>
#include "tests/gui/screen.h"

inline constexpr const char* plotDialogResource = R"(<?xml version="1.0" encoding="UTF-8"?>
<resource xmlns="http://www.wxwidgets.org/wxxrc" version="2.5.3.0">
  <object class="wxDialog" name="PlotDialog">
    <title>Plot</title>
    <object class="wxFlexGridSizer">
      <cols>2</cols><vgap>8</vgap><hgap>10</hgap><growablecols>1</growablecols>
      <object class="sizeritem"><flag>wxALL</flag><border>8</border>
        <object class="wxStaticText"><label>Paper size</label></object>
      </object>
      <object class="sizeritem"><flag>wxALL|wxEXPAND</flag><border>8</border>
        <object class="wxChoice" name="paper">
          <content><item>ISO full bleed A1 (841.00 x 594.00 mm)</item></content>
          <selection>0</selection>
        </object>
      </object>
      <object class="sizeritem"><flag>wxALL</flag><border>8</border>
        <object class="wxStaticText"><label>Page setup</label></object>
      </object>
      <object class="sizeritem"><flag>wxALL|wxEXPAND</flag><border>8</border>
        <object class="wxTextCtrl" name="setup"><value>Drawings of the ground floor</value></object>
      </object>
      <object class="sizeritem"><flag>wxALL</flag><border>8</border>
        <object class="wxStaticText" name="link"><label>How styles work</label></object>
      </object>
      <object class="sizeritem"><flag>wxALL</flag><border>8</border>
        <object class="wxCheckBox"><label>Plot with plot styles</label><checked>1</checked></object>
      </object>
      <object class="sizeritem"><flag>wxALL</flag><border>8</border>
        <object class="wxStaticText" name="warning"><label>Too large</label></object>
      </object>
      <object class="sizeritem"><flag>wxALL|wxALIGN_RIGHT</flag><border>8</border>
        <object class="wxButton" name="wxID_OK"><label>OK</label></object>
      </object>
    </object>
  </object>
</resource>)";

/// The GUI font for a window and all in it.
inline void useGuiFont(wxWindow& window) {
    wut::setGuiFont(&window);
    wut::setFontSize(&window, wut::guiSize(ut::EGuiSize::FontPoints), false);
    for (wxWindow* child : window.GetChildren()) {
        useGuiFont(*child);
    }
}

/// The colours of the current theme for a dialog and all in it.
inline void useGuiColors(wxWindow& window) {
    using enum ut::EGuiColor;
    const wxString name = window.GetName();
    const bool isChoice = dynamic_cast<const wxChoice*>(&window) != nullptr;
    const bool isButton = dynamic_cast<const wxButton*>(&window) != nullptr;
    // GTK paints choices over what colour they are given, but for the text's place.
    if (!isChoice || onWindows()) {
        window.SetBackgroundColour(wut::guiColor(isChoice || name == "setup" ? FieldBackground
                                                 : isButton                  ? ButtonBackground
                                                                             : WindowBackground));
        window.SetForegroundColour(wut::guiColor(name == "warning" ? Warning
                                                 : name == "link"  ? Link
                                                                   : Text));
    }
    for (wxWindow* child : window.GetChildren()) {
        useGuiColors(*child);
    }
}
