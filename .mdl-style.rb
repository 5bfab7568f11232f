all

# Takes a table behind a comment for text; scripts/lint measures the lines instead.
exclude_rule 'MD013'

# Commands are indented, code in a language is fenced to name the language.
exclude_rule 'MD046'
