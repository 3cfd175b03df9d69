lload "parser.ddb"
parse "1 + 2 * 3" ;
answer "1 + 2 * 3" ;
answer "(1 + 2) * 3" ;
answer "2 * (30 - 4) / 4 - 1" ;
answer "100 - 10 - 1" ;
parse "(1 + 2" ;
parse "1 + x" ;
