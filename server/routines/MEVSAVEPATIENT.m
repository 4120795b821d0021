MEVSAVEPATIENT ; Saves the records of which a patient has one: in a transaction, after checking rights and values
 ;
REP ; Call: patient ^ counts ^ last period ^ method ^ its date [^ pregnant ^ delivery ^ estimation method]
 NEW bad,dfn,index,node,method,estimate
 SET dfn=$PIECE(param,"^"),reply=$$REFUSED^MEVRIGHTS("REP")
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 IF '$$WOMAN(dfn) DO NO^MEVSAVE("Reproductive factors are kept only of women and of girls older than 8.") QUIT
 IF $PIECE(param,"^",2)'?1"G"1.2N1"P"1.2N1"LC"1.2N1"SA"1.2N1"TA"1.2N DO  QUIT
 . DO NO^MEVSAVE("The counts "_$$BRIEF^MEVTEXT($PIECE(param,"^",2),40)_" cannot be read.")
 SET bad=""
 FOR index=7,5,3 SET bad=$$BADDATE^MEVSAVE($PIECE(param,"^",index),bad)
 IF bad'="" DO NO^MEVSAVE(bad) QUIT
 IF $$PARSE^MEVDATE($PIECE(param,"^",3))\1>$$TODAY^MEVDATE DO  QUIT
 . DO NO^MEVSAVE("The last menstrual period cannot be in the future.")
 SET method=$$CODE^MEVCODES("METHOD",$PIECE(param,"^",4)),estimate=$$CODE^MEVCODES("ESTIMATE",$PIECE(param,"^",8))
 IF method="",$PIECE(param,"^",4)'="" DO NO^MEVSAVE("The family planning method is not known.") QUIT
 IF estimate="",$PIECE(param,"^",8)'="" DO NO^MEVSAVE("The way of determining the delivery date is not known.") QUIT
 ; A form for a man or a girl sends no pregnancy; filing that would delete an existing one.
 IF $LENGTH(param,"^")<8 DO NO^MEVSAVE("The pregnancy's data are missing: nothing was saved.") QUIT
 IF $PIECE(param,"^",6)'?1(1"0",1"1") DO NO^MEVSAVE("The pregnancy flag must be 0 or 1.") QUIT
 ; The record has no pregnancy flag: one of these two pieces shows the pregnancy.
 IF $PIECE(param,"^",6),$PIECE(param,"^",7,8)="^" DO  QUIT
 . DO NO^MEVSAVE("Enter the estimated delivery, or choose how it was determined; ""Unknown Method"" will do.")
 SET node=dfn_"^"_$PIECE(param,"^",2)_"^"_$$PARSE^MEVDATE($PIECE(param,"^",3))
 SET node=node_"^"_method_"^"_$$PARSE^MEVDATE($PIECE(param,"^",5))
 ; Without the pregnancy flag, the pregnancy's data are deleted.
 IF $PIECE(param,"^",6) SET node=node_"^"_estimate_"^"_($$PARSE^MEVDATE($PIECE(param,"^",7))\1)
 ELSE  SET node=node_"^^"
 IF $PIECE(node,"^",7)=0 SET $PIECE(node,"^",7)=""
 DO PUT^MEVSAVE("^MEVREP",dfn,node),CHANGED^MEVSAVE(dfn,"REP")
 QUIT
 ;
WOMAN(dfn) ; True for a woman or a girl older than 8 with a known birth date
 QUIT $PIECE(^MEVPAT(dfn,0),"^",2)="F"&($$AGE^MEVDATE($PIECE(^MEVPAT(dfn,0),"^",3))>8)
 ;
BMSR ; Call: patient ^ weight ^ order ^ formula ^ breast stopped ^ solids ^ mother
 NEW bad,dfn,index,node,order,mother,weight
 SET dfn=$PIECE(param,"^"),reply=$$REFUSED^MEVRIGHTS("BMSR")
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOSTCALLS(dfn) SET reply=$$NOPATIENT^MEVHOSTCALLS(dfn) QUIT
 SET weight=$$WEIGHT($PIECE(param,"^",2))
 IF weight="BAD" DO NO^MEVSAVE("The birth weight "_$$BRIEF^MEVTEXT($PIECE(param,"^",2),40)_" cannot be read.") QUIT
 SET order=$PIECE(param,"^",3),bad="",mother=$PIECE(param,"^",7)
 IF order'="",'$$BETWEEN^MEVNUMBER(order,0,25) DO  QUIT
 . DO NO^MEVSAVE("The birth order "_$$BRIEF^MEVTEXT(order,20)_" is not possible.")
 FOR index=4:1:6 SET:$$FEEDINGAGE($PIECE(param,"^",index))="BAD" bad=$PIECE(param,"^",index)
 IF bad'="" DO NO^MEVSAVE("The age "_$$BRIEF^MEVTEXT(bad,20)_" cannot be read.") QUIT
 IF mother'="",'$$KNOWN^MEVHOSTCALLS(mother) DO NO^MEVSAVE("The mother or guardian is not known.") QUIT
 IF mother=dfn DO NO^MEVSAVE("The patient cannot be the mother or guardian.") QUIT
 SET node=dfn_"^"_weight_"^"_$$VALUE^MEVNUMBER(order)
 FOR index=4:1:6 SET node=node_"^"_$$FEEDINGAGE($PIECE(param,"^",index))
 DO PUT^MEVSAVE("^MEVBMSR",dfn,node_"^"_mother),CHANGED^MEVSAVE(dfn,"BMSR")
 QUIT
 ;
FEEDINGAGE(text) ; A number and D, W, M or Y; empty for an empty text, "BAD" for any other
 NEW unit
 IF text="" QUIT ""
 SET unit=$$UPPER^MEVCODES($EXTRACT(text,$LENGTH(text))),text=$EXTRACT(text,1,$LENGTH(text)-1)
 IF "DWMY"'[unit QUIT "BAD"
 QUIT $SELECT($$BETWEEN^MEVNUMBER(text,0,999):$$VALUE^MEVNUMBER(text)_unit,1:"BAD")
 ;
WEIGHT(text) ; pounds ^ ounces ^ kilograms ^ grams of "7 2", "7-2", "3.2K", "3200G"; "^^^" for a bare unit; "BAD"
 NEW letter,parted
 SET text=$$UPPER^MEVCODES($$TRIM^MEVTEXT(text))
 IF text=""!(text="K")!(text="G") QUIT "^^^"
 ; As in the form: splits at the first blank or, without a blank, at the first hyphen.
 SET parted=$SELECT(text[" ":" ",text["-":"-",1:"")
 IF parted'="" QUIT $$POUNDS($PIECE(text,parted),$PIECE(text,parted,2,$LENGTH(text)))
 SET letter=$EXTRACT(text,$LENGTH(text)),text=$EXTRACT(text,1,$LENGTH(text)-1)
 IF letter'="K",letter'="G" QUIT "BAD"
 IF '$$BETWEEN^MEVNUMBER(text,0,$SELECT(letter="K":100,1:100000)) QUIT "BAD"
 QUIT $$SPLIT($JUSTIFY($$VALUE^MEVNUMBER(text)*$SELECT(letter="K":1000,1:1),0,0))
 ;
POUNDS(pounds,ounces) ; The four weights of pounds and ounces; "BAD" outside 0 to 99
 SET pounds=$$VALUE^MEVNUMBER(pounds),ounces=$$VALUE^MEVNUMBER(ounces)
 IF pounds=""!(ounces="") QUIT "BAD"
 IF pounds<0!(pounds>99)!(ounces<0)!(ounces>99) QUIT "BAD"
 QUIT $$UNITS($JUSTIFY(pounds*453.592+(ounces*28.35),0,0),pounds,ounces)
 ;
SPLIT(grams) ; The four weights of a weight in grams
 NEW ounces
 SET ounces=$JUSTIFY(grams/28.35,0,0)
 QUIT $$UNITS(grams,ounces\16,ounces#16)
 ;
UNITS(grams,pounds,ounces) ; The four weights as pieces
 QUIT pounds_"^"_ounces_"^"_$$SHOWN^MEVNUMBER(+$JUSTIFY(grams/1000,0,3))_"^"_+grams
