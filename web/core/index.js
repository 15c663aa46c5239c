export { Engine, PlatenError, RestartedError } from './engine.js';
export { Workspace } from './workspace.js';
