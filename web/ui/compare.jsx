export const Compare = () => null; export const findingCount = () => 0;
