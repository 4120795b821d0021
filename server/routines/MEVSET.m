MEVSET ; Saves the records of which a patient has one: inside a transaction, after the user's rights and each value were checked
 ; A refusal is an error reply and changes nothing.
 ;
NO(text) ; Refuses
 SET reply="-1^"_text
 QUIT
 ;
MAY(root,ien,patient,what) ; The record of this number may be changed: it is there, this patient's where one is named, and not locked
 NEW node
 IF ien'?1N.11N DO NO("There is no such "_what_".") QUIT 0
 SET node=$GET(@root@(ien,0))
 IF node="" DO NO("The "_what_" "_ien_" does not exist any more.") QUIT 0
 IF patient'="",$PIECE(node,"^")'=patient DO NO("The "_what_" belongs to another patient.") QUIT 0
 IF $PIECE(node,"^",3) DO NO("The "_what_" is locked.") QUIT 0
 QUIT 1
 ;
CHANGED(patient,kind) ; The event of a patient's data
 DO RAISE^MEVEVENT($SELECT(kind="REF":"REFUSAL.",1:"VXR.")_patient_"."_kind,"")
 SET reply=1
 QUIT
 ;
PUT(root,ien,node) ; Files an entry of one per patient, keeping what was there
 NEW ignored
 IF $DATA(@root@(ien,0)) DO KEEP^MEVDD(root,ien) SET @root@(ien,0)=node QUIT
 SET ignored=$$FILE^MEVDD(root,ien,node)
 QUIT
 ;
REP ; Call: patient ^ counts ^ last period ^ method ^ its date [^ pregnant ^ delivery ^ estimation method]
 NEW bad,dfn,index,node,method,estimate
 SET dfn=$PIECE(param,"^"),reply=$$REFUSED^MEVMAY("REP")
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOST(dfn) SET reply=$$NOPATIENT^MEVHOST(dfn) QUIT
 IF $PIECE(^MEVPAT(dfn,0),"^",2)'="F" DO NO("Reproductive factors are kept of women only.") QUIT
 IF $PIECE(param,"^",2)'?1"G"1.2N1"P"1.2N1"LC"1.2N1"SA"1.2N1"TA"1.2N DO NO("The counts "_$EXTRACT($PIECE(param,"^",2),1,40)_" cannot be read.") QUIT
 IF $PIECE(param,"^",6)'="",$PIECE(param,"^",6)'?1(1"0",1"1") DO NO("The pregnancy flag must be 0 or 1.") QUIT
 SET bad=""
 FOR index=3,5,7 IF $PIECE(param,"^",index)'="",$$PARSE^MEVDATE($PIECE(param,"^",index))="" SET bad=$PIECE(param,"^",index) QUIT
 IF bad'="" DO NO($EXTRACT(bad,1,40)_" is not a date.") QUIT
 IF $$PARSE^MEVDATE($PIECE(param,"^",3))\1>$$TODAY^MEVDATE DO NO("The last menstrual period cannot be in the future.") QUIT
 SET method=$$CODE^MEVCODE("METHOD",$PIECE(param,"^",4)),estimate=$$CODE^MEVCODE("ESTIMATE",$PIECE(param,"^",8))
 IF method="",$PIECE(param,"^",4)'="" DO NO("The family planning method is not known.") QUIT
 IF estimate="",$PIECE(param,"^",8)'="" DO NO("The way of determining the delivery date is not known.") QUIT
 SET node=dfn_"^"_$PIECE(param,"^",2)_"^"_$$PARSE^MEVDATE($PIECE(param,"^",3))_"^"_method_"^"_$$PARSE^MEVDATE($PIECE(param,"^",5))
 ; Without the pregnancy flag the pregnancy's data go.
 IF $PIECE(param,"^",6) SET node=node_"^"_estimate_"^"_($$PARSE^MEVDATE($PIECE(param,"^",7))\1)
 ELSE  SET node=node_"^^"
 IF $PIECE(node,"^",7)=0 SET $PIECE(node,"^",7)=""
 DO PUT("^MEVREP",dfn,node),CHANGED(dfn,"REP")
 QUIT
 ;
BMSR ; Call: patient ^ weight ^ order ^ formula ^ breast stopped ^ solids ^ mother
 NEW bad,dfn,index,node,order,mother,weight
 SET dfn=$PIECE(param,"^"),reply=$$REFUSED^MEVMAY("BMSR")
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOST(dfn) SET reply=$$NOPATIENT^MEVHOST(dfn) QUIT
 SET weight=$$WEIGHT($PIECE(param,"^",2))
 IF weight="BAD" DO NO("The birth weight "_$EXTRACT($PIECE(param,"^",2),1,40)_" cannot be read.") QUIT
 SET order=$PIECE(param,"^",3),bad="",mother=$PIECE(param,"^",7)
 IF order'="",order'?1.2N!(order<1)!(order>24) DO NO("The birth order "_$EXTRACT(order,1,20)_" is not possible.") QUIT
 FOR index=4:1:6 IF $PIECE(param,"^",index)'="",$PIECE(param,"^",index)'?1.3N.1(1".".2N)1(1"D",1"W",1"M",1"Y") SET bad=$PIECE(param,"^",index)
 IF bad'="" DO NO("The age "_$EXTRACT(bad,1,20)_" cannot be read.") QUIT
 IF mother'="",'$$KNOWN^MEVHOST(mother) DO NO("The mother or guardian is not known.") QUIT
 SET node=dfn_"^"_weight_"^"_order_"^"_$PIECE(param,"^",4,6)_"^"_mother
 DO PUT("^MEVBMSR",dfn,node),CHANGED(dfn,"BMSR")
 QUIT
 ;
WEIGHT(text) ; pounds ^ ounces ^ kilograms ^ grams of "7 2", "7-2", "3.2K", "3200G"; a bare unit is no weight; "BAD"
 NEW grams,number,ounces,pounds
 SET text=$$UPPER^MEVCODE(text)
 IF text=""!(text="K")!(text="G") QUIT "^^^"
 IF text[" "!(text["-") DO  QUIT $SELECT(text="":"BAD",1:$$UNITS(grams,pounds,ounces))
 . SET text=$TRANSLATE(text,"-"," "),pounds=$PIECE(text," "),ounces=$PIECE(text," ",$LENGTH(text," "))
 . IF '$$NUMBER(pounds)!'$$NUMBER(ounces) SET text="" QUIT
 . SET grams=$JUSTIFY(pounds*453.592+(ounces*28.35),0,0)
 SET number=$EXTRACT(text,1,$LENGTH(text)-1)
 IF '$$NUMBER(number) QUIT "BAD"
 IF text["K" QUIT $$SPLIT($JUSTIFY(number*1000,0,0))
 IF text["G" QUIT $$SPLIT($JUSTIFY(number,0,0))
 QUIT "BAD"
 ;
NUMBER(text) ; A number with at most one point
 QUIT text?1.5N!(text?.5N1"."1.5N)!(text?1.5N1".")
 ;
SPLIT(grams) ; The four weights of a weight in grams
 NEW ounces
 SET ounces=$JUSTIFY(grams/28.35,0,0)
 QUIT $$UNITS(grams,ounces\16,ounces#16)
 ;
UNITS(grams,pounds,ounces) ;
 QUIT +pounds_"^"_+ounces_"^"_(+$JUSTIFY(grams/1000,0,3))_"^"_+grams
