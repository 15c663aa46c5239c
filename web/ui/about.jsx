export const About = () => null; export const findingCount = () => 0;
