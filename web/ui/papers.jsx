export const Papers = () => null; export const findingCount = () => 0;
