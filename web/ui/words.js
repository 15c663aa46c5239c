// What files call things, and what people call them. Whatever is not here shows its own name.
export const settingLabels = {
    color: 'Colour', lineweight: 'Line weight', screening: 'Screening', grayscale: 'Grayscale',
    dither: 'Dithering', linetype: 'Line type', adaptive: 'Adaptive line type',
    pattern_size: 'Pattern size', ends: 'Line ends', joins: 'Line joins', fill: 'Fill',
    pen: 'Plotter pen', virtual_pen: 'Virtual pen', description: 'Description',
};

/** The order of the form: what people change most comes first. */
export const settingOrder = Object.keys(settingLabels);

export const propertyLabels = {
    PdfImageDPI: 'Image resolution, dots per inch',
    PdfImageCompression: 'Image compression',
    PdfImageAntiAlias: 'Smooth images',
    PdfLayersSetting: 'Layers',
    PdfPdfA: 'PDF/A level',
    PdfCreateBookmarks: 'Make bookmarks',
    PdfEmbeddedTtf: 'Embed TrueType fonts',
    PdfExport: 'Write PDF',
    PdfExportHyperlinks: 'Keep hyperlinks',
    View_New_File: 'Open the file in its viewer afterwards',
};

/** "PdfImageDPI" as "Pdf image DPI". */
export const propertyLabel = (name) => propertyLabels[name] ??
    name.replaceAll(/_+/g, ' ').replaceAll(/([a-z\d])([A-Z][a-z])/g, (_, end, begin) =>
        `${end} ${begin.toLowerCase()}`);

export const plural = (count, one, many = `${one}s`) => `${count} ${count === 1 ? one : many}`;
