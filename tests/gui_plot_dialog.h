/// A dialog as applications have it for plotting, and its look.
#pragma once

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/window.h>

#include "gui_look.h"
#include "tests/gui_screen.h"

inline constexpr const char* plotDialogResource = R"(<?xml version="1.0" encoding="UTF-8"?>
<resource xmlns="http://www.wxwidgets.org/wxxrc" version="2.5.3.0">
  <object class="wxDialog" name="PlotDialog">
    <title>Plot</title>
    <object class="wxBoxSizer">
      <orient>wxVERTICAL</orient>
      <object class="sizeritem">
        <flag>wxEXPAND|wxALL</flag><border>12</border>
        <object class="wxFlexGridSizer">
          <cols>2</cols><vgap>8</vgap><hgap>10</hgap><growablecols>1</growablecols>
          <object class="sizeritem"><flag>wxALIGN_CENTRE_VERTICAL</flag>
            <object class="wxStaticText"><label>Printer</label></object>
          </object>
          <object class="sizeritem"><flag>wxEXPAND</flag>
            <object class="wxChoice" name="printer">
              <content><item>Print As PDF.pc3</item><item>Plotter A0.pc3</item></content>
              <selection>0</selection>
            </object>
          </object>
          <object class="sizeritem"><flag>wxALIGN_CENTRE_VERTICAL</flag>
            <object class="wxStaticText"><label>Paper size</label></object>
          </object>
          <object class="sizeritem"><flag>wxEXPAND</flag>
            <object class="wxChoice" name="paper">
              <content>
                <item>ISO full bleed A1 (841.00 x 594.00 mm)</item><item>ISO A4</item>
              </content>
              <selection>0</selection>
            </object>
          </object>
          <object class="sizeritem"><flag>wxALIGN_CENTRE_VERTICAL</flag>
            <object class="wxStaticText"><label>Number of copies</label></object>
          </object>
          <object class="sizeritem">
            <object class="wxSpinCtrl" name="copies">
              <value>2</value><min>1</min><max>99</max>
            </object>
          </object>
          <object class="sizeritem"><flag>wxALIGN_CENTRE_VERTICAL</flag>
            <object class="wxStaticText"><label>Page setup</label></object>
          </object>
          <object class="sizeritem"><flag>wxEXPAND</flag>
            <object class="wxTextCtrl" name="setup"><value>Drawings of the ground floor</value>
            </object>
          </object>
        </object>
      </object>
      <object class="sizeritem">
        <flag>wxLEFT|wxRIGHT|wxBOTTOM</flag><border>12</border>
        <object class="wxCheckBox" name="styles">
          <label>Plot with plot styles</label><checked>1</checked>
        </object>
      </object>
      <object class="sizeritem">
        <flag>wxLEFT|wxRIGHT|wxBOTTOM</flag><border>12</border>
        <object class="wxCheckBox" name="stamp"><label>Plot stamp on</label></object>
      </object>
      <object class="sizeritem">
        <flag>wxLEFT|wxRIGHT|wxBOTTOM</flag><border>12</border>
        <object class="wxStaticText" name="warning">
          <label>The drawing is larger than the printable area.</label>
        </object>
      </object>
      <object class="sizeritem">
        <flag>wxLEFT|wxRIGHT|wxBOTTOM</flag><border>12</border>
        <object class="wxStaticText" name="link"><label>How plot styles work</label></object>
      </object>
      <object class="sizeritem">
        <flag>wxEXPAND|wxALL</flag><border>12</border>
        <object class="wxBoxSizer">
          <orient>wxHORIZONTAL</orient>
          <object class="sizeritem">
            <object class="wxButton" name="preview"><label>Preview...</label></object>
          </object>
          <object class="spacer"><option>1</option><size>40,1</size></object>
          <object class="sizeritem"><flag>wxRIGHT</flag><border>8</border>
            <object class="wxButton" name="wxID_OK"><label>OK</label></object>
          </object>
          <object class="sizeritem">
            <object class="wxButton" name="wxID_CANCEL"><label>Cancel</label></object>
          </object>
        </object>
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
    const bool isField = isChoice || name == "copies" || name == "setup";
    const bool isButton = dynamic_cast<const wxButton*>(&window) != nullptr;
    // GTK paints choices over what colour they are given, but for the text's place.
    if (!isChoice || onWindows()) {
        window.SetBackgroundColour(wut::guiColor(isField    ? FieldBackground
                                                 : isButton ? ButtonBackground
                                                            : WindowBackground));
        window.SetForegroundColour(wut::guiColor(name == "warning" ? Warning
                                                 : name == "link"  ? Link
                                                                   : Text));
    }
    for (wxWindow* child : window.GetChildren()) {
        useGuiColors(*child);
    }
}
