import js from '@eslint/js';

export default [{
  ...js.configs.recommended,
  rules: {
    ...js.configs.recommended.rules,
    'no-undef': 'off',  // the checker of types knows what a browser has
    'no-control-regex': 'off',
    eqeqeq: 'error',
    'no-eval': 'error',
    'no-implied-eval': 'error',
    'no-var': 'error',
    'prefer-const': ['error', { destructuring: 'all' }],
  },
}, {
  files: ['console/*.js'],
  rules: { 'max-lines-per-function': ['error', { max: 110, skipComments: true, skipBlankLines: true }] },
}];
