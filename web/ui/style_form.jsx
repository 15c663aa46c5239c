export const StyleForm = () => null; export const findingCount = () => 0;
