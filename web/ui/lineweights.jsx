export const LineWeights = () => null; export const findingCount = () => 0;
