export const Dialogs = () => null; export const findingCount = () => 0;
