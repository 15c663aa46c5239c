export const Items = () => null; export const findingCount = () => 0;
