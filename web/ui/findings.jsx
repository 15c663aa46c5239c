export const Findings = () => null; export const findingCount = () => 0;
