"""A program with types, which mypy checks and nobody runs: what an editor knows of the package."""

from pathlib import Path
from typing import Dict, List, Optional, Union

import platen


def use(path: Path) -> Dict[str, int]:
    with platen.edit(path) as table:
        table.styles["Color_1":"Color_9"].lineweight = "0.014in"  # type: ignore[misc]
        table.styles[1:9].color = 7
        table.styles["W*"].dither = True
        table.lineweights[3] = 0.35
        table["description"] = table["description"]
    style: platen.Style = table.styles[1]
    weight: Union[float, str] = style.lineweight
    screening: int = table.styles[1, "Color_7"].screening
    style.screening = 0.5  # type: ignore[assignment]
    style.linewight = weight  # type: ignore[attr-defined]
    changes: platen.Comparison = platen.compare(path, table)
    lines: List[str] = changes.lines
    paper: Optional[platen.Paper] = platen.open_papers(path).get("A0")
    with platen.edit_papers(path) as papers:
        if paper is not None:
            papers.resize(paper.name, *platen.open_papers(path).largest, margins=paper.margins)
    findings: List[platen.Finding] = table.findings()
    return {"screening": screening, "lines": len(lines), "findings": len(findings)}
