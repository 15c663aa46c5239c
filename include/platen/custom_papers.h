/// Editing the custom papers of a plot configuration.
#pragma once

#include <string>
#include <vector>

#include <platen/oda.h>
#include <platen/platen_api.h>
#include <platen/plotcfg.h>

class wxString;

namespace wut {

/// The custom papers of one configuration in a list of its own, in which every length is seen in
/// one unit whatever the unit of the paper.
///
/// Millimetres and pixels count as one scale; an inch is 25.4 of both. Indexes are not checked.
class PLATEN_API CustomPaperList {
public:
    using Units = OdDbPlotSettings::PlotPaperUnits;
    /// A side or a margin, such as `&CustomPaperSize::width`.
    using Length = double CustomPaperSize::*;

    /// Borrows the configuration; the list is empty until `load`.
    explicit CustomPaperList(CPlotCfg3* config) : config_(config) {}

    /// Takes the configuration's papers: its own, then those of its PMP.
    void load();
    /// Puts the list into the configuration.
    void save();
    unsigned size() const;  ///< Number of papers.
    const CustomPaperSize& operator[](unsigned index) const { return papers_[index]; }
    /// Sets the name for people; the global name stays.
    void setName(unsigned index, const std::wstring& name);
    /// True when a paper has exactly this name, for people or globally.
    bool hasName(const std::wstring& name) const;
    /// In the default units.
    ///@{
    double get(unsigned index, Length length) const;
    void set(unsigned index, Length length, double value) {
        set(index, length, value, defaultUnits_);
    }
    void set(unsigned index, Length length, double value, Units units);
    ///@}
    /// Adds a paper without a size, in the default units, to be kept in the PMP.
    void append(const std::wstring& name);
    void remove(unsigned index);  ///< Of the list; the configuration follows with `save`.

    /// The unit of every length without one; millimetres at first. Setting it converts nothing.
    ///@{
    Units getDefaultUnits() const { return defaultUnits_; }
    void setDefaultUnits(Units units) { defaultUnits_ = units; }
    ///@}

private:
    Units defaultUnits_ = OdDbPlotSettings::kMillimeters;
    CPlotCfg3* config_;
    std::vector<CustomPaperSize> papers_;
};

/// The model behind a dialog that edits a `CustomPaperList`. The operations are virtual so that a
/// dialog can be tested on another model.
class PLATEN_API CustomPapers {
public:
    using Units = CustomPaperList::Units;

    /// Borrows the configuration; the list is empty until `load`.
    explicit CustomPapers(CPlotCfg3* config) : papers_(config) {}
    CustomPapers(const CustomPapers&) = default;
    CustomPapers& operator=(const CustomPapers&) = default;
    virtual ~CustomPapers();

    /// Takes the configuration's papers: its own, then those of its PMP.
    virtual void load();
    /// Puts the list into the configuration.
    virtual void save();
    virtual unsigned size() const;  ///< Number of papers.
    /// The name for people.
    virtual wxString getName(unsigned index);
    /// The global name stays.
    virtual void setName(unsigned index, const wxString& name);
    /// True when a paper has exactly this name, for people or globally.
    virtual bool isDuplicateName(const wxString& name) const;
    /// In the default units.
    ///@{
    virtual double getWidth(unsigned index) const;
    virtual double getHeight(unsigned index) const;
    virtual double getTopMargin(unsigned index) const;
    virtual double getBottomMargin(unsigned index) const;
    virtual double getLeftMargin(unsigned index) const;
    virtual double getRightMargin(unsigned index) const;
    ///@}
    virtual void setSize(unsigned index, double width, double height);  ///< In the default units.
    /// Without units: in the default units.
    ///@{
    virtual void setLeftMargin(unsigned index, double margin);
    virtual void setLeftMargin(unsigned index, double margin, Units units);
    virtual void setRightMargin(unsigned index, double margin);
    virtual void setRightMargin(unsigned index, double margin, Units units);
    virtual void setTopMargin(unsigned index, double margin);
    virtual void setTopMargin(unsigned index, double margin, Units units);
    virtual void setBottomMargin(unsigned index, double margin);
    virtual void setBottomMargin(unsigned index, double margin, Units units);
    ///@}
    /// Adds a paper without a size, in the default units, to be kept in the PMP.
    virtual void append(const wxString& name);
    virtual void remove(unsigned index);  ///< Of the list; the configuration follows with `save`.

    /// The unit of every length without one; millimetres at first. Setting it converts nothing.
    ///@{
    Units getDefaultUnits() const { return papers_.getDefaultUnits(); }
    void setDefaultUnits(Units units) { papers_.setDefaultUnits(units); }
    ///@}

private:
    CustomPaperList papers_;
};

}  // namespace wut
